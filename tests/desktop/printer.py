"""A CUPS server of the tests' own, with a printer that writes PDF files."""

import os
import pathlib
import pwd
import shutil
import subprocess

import desktop

PPD = pathlib.Path("/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd")
BACKEND = pathlib.Path("/usr/lib/cups/backend/cups-pdf")

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
SystemGroup root
"""


def why_not():
    """The reason why no printer can be had here; empty when one can."""
    if os.geteuid() != 0:
        return "the PDF printer's backend runs for root alone"
    missing = [name for name in ("cupsd", "lpadmin", "pdftotext", "pdftoppm") if shutil.which(name) is None]
    missing += [str(path) for path in (PPD, BACKEND) if not path.exists()]
    return "not found: " + ", ".join(missing) if missing else ""


class Printer:
    """The server, running; printed() gives the pages of the next document."""

    def __enter__(self):
        # Short: the path of a socket is.
        self.folder = desktop.BUILD / "cups"
        shutil.rmtree(self.folder, ignore_errors=True)
        for name in ("root/ppd", "spool", "tmp", "state", "cache"):
            (self.folder / name).mkdir(parents=True)
        (self.folder / "tmp").chmod(0o1777)
        (self.folder / "cupsd.conf").write_text(SERVER.format(folder=self.folder))
        (self.folder / "cups-files.conf").write_text(FILES.format(folder=self.folder))
        self.process = subprocess.Popen(
            ["cupsd", "-f", "-c", self.folder / "cupsd.conf", "-s", self.folder / "cups-files.conf"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        os.environ["CUPS_SERVER"] = str(self.folder / "cups.sock")
        desktop.wait_for((self.folder / "cups.sock").exists, "the print server")
        subprocess.run(["lpadmin", "-p", "Torvane", "-v", "cups-pdf:/", "-P", PPD, "-E"], check=True,
                       stderr=subprocess.DEVNULL)
        subprocess.run(["lpadmin", "-d", "Torvane"], check=True)
        self.output = pathlib.Path(pwd.getpwuid(os.geteuid()).pw_dir) / "PDF"
        self.before = self.files()
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        os.environ.pop("CUPS_SERVER")

    def files(self):
        return set(self.output.glob("*.pdf")) if self.output.exists() else set()

    def printed(self, name):
        """Takes the document that comes out of the printer to the screenshots."""
        paper = desktop.wait_for(lambda: next(iter(self.files() - self.before), None), "a printed document")
        jobs = ["lpstat", "-W", "not-completed"]
        desktop.wait_for(lambda: not subprocess.run(jobs, capture_output=True).stdout, "the print job")
        target = desktop.SCREENSHOTS / f"{name}.pdf"
        shutil.move(paper, target)
        subprocess.run(["pdftoppm", "-r", "60", "-png", target, target.with_suffix("")], check=True)
        return target
