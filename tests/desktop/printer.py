"""A CUPS server of the tests' own, with a printer that writes into a file of its folder."""

import os
import pathlib
import shutil
import subprocess

import desktop

PPD = pathlib.Path("/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd")

SERVER = """\
Listen {folder}/cups.sock
DefaultAuthType None
Browsing Off
WebInterface No
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
"""

FILES = """\
ServerRoot {folder}/root
RequestRoot {folder}/spool
TempDir {folder}/tmp
StateDir {folder}/state
CacheDir {folder}/cache
ServerBin /usr/lib/cups
DataDir /usr/share/cups
AccessLog {folder}/access_log
ErrorLog {folder}/error_log
PageLog {folder}/page_log
Printcap {folder}/printcap
SystemGroup root
FileDevice Yes
"""


def why_not():
    """The reason why no printer can be had here; empty when one can."""
    if os.geteuid() != 0:
        return "the print server runs for root alone"
    missing = [name for name in ("cupsd", "lpadmin", "gs", "pdftotext", "pdftoppm") if shutil.which(name) is None]
    missing += [] if PPD.exists() else [str(PPD)]
    return "not found: " + ", ".join(missing) if missing else ""


class Printer:
    """The server, running; printed() gives the pages of the next document."""

    def __enter__(self):
        # Short: the path of a socket is.
        self.folder = desktop.LANE / "cups"
        shutil.rmtree(self.folder, ignore_errors=True)
        for name in ("root/ppd", "spool", "tmp", "state", "cache"):
            (self.folder / name).mkdir(parents=True)
        (self.folder / "tmp").chmod(0o1777)
        (self.folder / "cupsd.conf").write_text(SERVER.format(folder=self.folder))
        (self.folder / "cups-files.conf").write_text(FILES.format(folder=self.folder))
        self.process = subprocess.Popen(
            [*desktop.ENDS_WITH_US, "cupsd", "-f", "-c", self.folder / "cupsd.conf", "-s", self.folder / "cups-files.conf"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        os.environ["CUPS_SERVER"] = str(self.folder / "cups.sock")
        desktop.wait_for((self.folder / "cups.sock").exists, "the print server")
        # One file, written anew by each job: no other's documents are looked at, and none are left to others.
        self.paper = self.folder / "printed.ps"
        self.run("lpadmin", "-p", "Torvane", "-v", f"file://{self.paper}", "-P", PPD, "-E")
        self.run("lpadmin", "-d", "Torvane")
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        os.environ.pop("CUPS_SERVER")

    def run(self, *words):
        return subprocess.run(words, env=desktop.environment(), check=True, capture_output=True).stdout

    def is_used(self):
        return self.paper.exists() and self.paper.stat().st_size > 0

    def printed(self, name):
        """Takes the document that comes out of the printer to the screenshots."""
        desktop.wait_for(self.is_used, "a printed document")
        desktop.wait_for(lambda: not self.run("lpstat", "-W", "not-completed"), "the print job")
        target = self.folder / f"{name}.pdf"
        self.run("gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=pdfwrite", f"-sOutputFile={target}", self.paper)
        self.paper.unlink()
        self.run("pdftoppm", "-r", "60", "-png", target, desktop.SCREENSHOTS / name)
        return target
