"""Source files with mutants in them, compiled and linked into tests of their own from the native build's objects."""

import json
import re
import shlex
import subprocess

COMPILE = ["-w", "-Wno-error", "-Wno-narrowing", "-O1"]


class Compiler:
    """Compiles as the native build does, into a folder of its own."""

    def __init__(self, root, native, folder):
        self.root, self.native, self.folder = root, native, folder
        entries = json.loads((native / "compile_commands.json").read_text())
        self.commands = {entry["file"]: shlex.split(entry["command"]) for entry in entries}
        link = subprocess.run(["ninja", "-C", str(native), "-t", "commands", "torvane_tests"], check=True,
                              capture_output=True, text=True).stdout.splitlines()[-1]
        self.link_command = next(shlex.split(part) for part in link.split("&&") if " -o torvane_tests " in part)
        self.switch = self.compile_switch()

    def arguments(self, file):
        """What a parser has to know: folders and the standard."""
        return [word for word in self.commands[str(self.root / file)] if word.startswith(("-I", "-D", "-std"))]

    def compile_switch(self):
        source = self.root / "tools" / "mutation" / "mutants.cpp"
        target = self.folder / "mutants.o"
        subprocess.run(["c++", "-std=c++20", "-O2", "-c", str(source), "-o", str(target)], check=True)
        return target

    def compile(self, file, text, syntax_only=False):
        """The object of the file with this text, or None; and what the compiler said."""
        source = self.folder / "source" / file
        source.parent.mkdir(parents=True, exist_ok=True)
        source.write_bytes(text)
        target = source.with_suffix(".o")
        command = [word for word in self.commands[str(self.root / file)] if word != "-Werror"]
        command[command.index("-o") + 1] = str(target)
        command[command.index("-c") + 1] = str(source)
        command += COMPILE + ["-I", str((self.root / file).parent)] + (["-fsyntax-only"] if syntax_only else [])
        run = subprocess.run(command, cwd=self.native, capture_output=True, text=True, check=False)
        return (target if run.returncode == 0 else None), run.stderr

    def link(self, objects, target):
        """The test program in which these objects stand for those of the library."""
        command = list(self.link_command)
        place = command.index("-o")
        command[place + 1] = str(target)
        command[place:place] = [str(path) for path in [self.switch, *objects]]
        subprocess.run(command, cwd=self.native, check=True)


def render(text, numbered, header):
    """The file's text with all these (number, mutant) in it, each behind its switch; lines keep their numbers."""
    edits = [(edit, number) for number, mutant in numbered for edit in mutant.edits]
    edits.sort(key=lambda one: (one[0].start, -one[0].end, one[0].kind != "statement", one[1]))
    body, rest = render_range(text, 0, len(text), edits)
    assert not rest
    return b'#include "' + str(header).encode() + b'"\n#line 1\n' + body


def at_run_time(text):
    """The rendered text with its tables made when the program starts, so that functions the compiler would work out can
    be changed as well. Does not compile where the compiler needs a table; lines keep their numbers."""
    text = re.sub(rb"^constinit const ", b"const ", text, flags=re.M)
    text = re.sub(rb"^constexpr (?=[\w:<>]+ \w+\[\w*\] = )", b"const ", text, flags=re.M)
    text = re.sub(rb"^static_assert\(.*?;$", lambda found: b"\n" * found.group().count(b"\n"), text, flags=re.M | re.S)
    return b"#define MUTANTS_AT_RUN_TIME\n" + text


def render_range(text, start, end, edits):
    out = []
    while edits and edits[0][0].end <= end:
        (edit, number), edits = edits[0], edits[1:]
        out.append(text[start:edit.start])
        inner, edits = render_range(text, edit.start, edit.end, edits)
        out.append(switched(edit, number, inner))
        start = edit.end
    out.append(text[start:end])
    return b"".join(out), edits


def switched(edit, number, inner):
    switch = b"mutation::chosen(%d)" % number
    if edit.kind == "statement":
        return b"if (" + switch + b") {} else " + inner
    if edit.kind == "condition":
        inner = b"bool(" + inner + b")"
    return b"(" + switch + b" ? " + edit.changed.encode() + b" : " + inner + b")"


def replaced(text, mutant):
    """The file's text as the mutant alone."""
    for edit in sorted(mutant.edits, key=lambda edit: -edit.start):
        text = text[:edit.start] + edit.changed.encode() + text[edit.end:]
    return text


def faulty_lines(source, errors):
    return {int(line) for line in re.findall(rf"{re.escape(str(source))}:(\d+):\d+: (?:fatal )?error", errors)}
