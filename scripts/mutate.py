"""Changes one operator or constant of the sources at a time and reports which changes no test notices.

Works on copies of the tracked files in build/mutate, so the working tree is never touched. Called by scripts/mutate.sh.
"""

import argparse
import concurrent.futures
import filecmp
import os
import pathlib
import queue
import random
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# A binary operator has a blank on both sides in formatted code; "&" of a reference and "<" of a template have not.
OPERATORS = {
    "==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "+": "-", "-": "+", "*": "/", "/": "*", "%": "*",
    "&&": "||", "||": "&&", "&": "|", "|": "&", "^": "&", "<<": ">>", ">>": "<<", "+=": "-=", "-=": "+=", "*=": "/=",
    "|=": "&=", "&=": "|=", "<<=": ">>=", ">>=": "<<=",
}
UNARY = {"++": "--", "--": "++", "!": "", "~": ""}
WORDS = {"true": "false", "false": "true", "min": "max", "max": "min"}

TOKEN = re.compile(
    r"""
    (?P<skip> //[^\n]* | /\*.*?\*/ | ^[ \t]*\#(?:[^\n\\]|\\.)*            # comments, preprocessor lines
            | R"(?P<fence>[^(]*)\(.*?\)(?P=fence)" | "(?:[^"\\\n]|\\.)*"  # texts
            | \bstatic_assert\b[^;]*; | \boperator\b[^\w\s]+ )
  | (?P<letter> '(?:[^'\\\n]|\\.)+' )
  | (?P<number> \b(?:0[xX][0-9a-fA-F']+|[0-9][0-9']*)(?P<kind>[uUlLzZ]*\b(?!\.)) )
  | (?P<real> \b[0-9][0-9']*\.[0-9]* )
  | (?P<word> [A-Za-z_]\w* )
  | (?P<binary> (?<=[ ])(?:<<=|>>=|==|!=|<=|>=|&&|\|\||<<|>>|\+=|-=|\*=|\|=|&=|[-+*/%&|^<>])(?=[ \n]) )
  | (?P<unary> \+\+ | -- | !(?!=) | ~(?=[\w(]) )
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)


class Mutation:
    def __init__(self, file, offset, old, new, text):
        self.file, self.offset, self.old, self.new = file, offset, old, new
        self.line = text.count("\n", 0, offset) + 1

    def __str__(self):
        return f"{self.file}:{self.line}: {self.old} -> {self.new or 'nothing'}"


def next_number(text):
    digits = text.replace("'", "")
    return hex(int(digits, 16) + 1) if digits[:2].lower() == "0x" else str(int(digits, 8 if re.match("0[0-7]", digits) else 10) + 1)


def next_letter(text):
    return f"'{chr(ord(text[1]) + 1)}'" if len(text) == 3 and text[1] not in "&[!~" else None


def replacement(match):
    """The new text of a token, None where it stays."""
    kind, text = match.lastgroup, match.group()
    if match.group("number"):
        suffix = match.group("kind")
        return next_number(text[: len(text) - len(suffix)]) + suffix
    if kind == "letter":
        return next_letter(text)
    return {"binary": OPERATORS, "unary": UNARY, "word": WORDS}.get(kind, {}).get(text)


def mutations_of(file, text):
    found = []
    for match in TOKEN.finditer(text):
        new = replacement(match)
        if new is not None:
            found.append(Mutation(file, match.start(), match.group(), new, text))
    return found


def tracked_files():
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True,
                            capture_output=True).stdout.decode()
    return [name for name in listed.split("\0") if name and (ROOT / name).is_file()]


def tests_of(file):
    return "tests_" + pathlib.PurePath(file).parts[1]


class Workshop:
    """A copy of the tree with a build of its own, in which one change at a time is tried."""

    def __init__(self, number, programs, options):
        self.tree = ROOT / "build" / "mutate" / str(number)
        self.build = self.tree / "build"
        self.programs, self.seconds, self.filter = programs, options.seconds, options.filter

    def make(self):
        files = tracked_files()
        for name in files:
            here, there = ROOT / name, self.tree / name
            if not there.exists() or not filecmp.cmp(here, there, shallow=False):
                there.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(here, there)
        known = set(files)
        for path in list(self.tree.rglob("*")):
            if path.is_file() and self.build not in path.parents and str(path.relative_to(self.tree)) not in known:
                path.unlink()
        if not (self.build / "build.ninja").exists():
            # Asserts of the library see more; what the linker takes is spent once for every change.
            subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DTAMRIX_UI=OFF",
                            "-DCMAKE_CXX_FLAGS=-O1 -D_GLIBCXX_ASSERTIONS -fuse-ld=gold"], check=True, stdout=subprocess.DEVNULL)
        if not self.compile():
            sys.exit(f"mutate: the unchanged sources do not build, see: cmake --build {self.build}")
        for program in self.programs:
            failed = self.failure(program)
            if failed:
                sys.exit(f"mutate: {program} fails on the unchanged sources: {failed}")

    def compile(self):
        command = ["cmake", "--build", self.build, "-j", "1", "--target", *self.programs]
        return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def failure(self, program):
        """What noticed: the name of the first test that fails, or how the program ended; None if all pass."""
        command = [self.build / "bin" / program, "--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={self.filter}"]
        try:
            run = subprocess.run(command, capture_output=True, timeout=self.seconds, cwd=self.build)
        except subprocess.TimeoutExpired:
            return f"no end after {self.seconds} s"
        if run.returncode == 0:
            return None
        named = re.search(r"\[  FAILED  \] ([\w./]+)", run.stdout.decode(errors="replace"))
        return named.group(1) if named else f"exit status {run.returncode}"

    def try_out(self, mutation):
        path = self.tree / mutation.file
        text = path.read_text()
        end = mutation.offset + len(mutation.old)
        assert text[mutation.offset : end] == mutation.old
        try:
            path.write_text(text[: mutation.offset] + mutation.new + text[end:])
            if not self.compile():
                return "does not compile"
            for program in self.programs:
                failed = self.failure(program)
                if failed:
                    return f"seen by {failed}"
            return "LIVED"
        finally:
            path.write_text(text)


def arguments():
    parser = argparse.ArgumentParser(
        prog="scripts/mutate.sh",
        description="Changes one operator or constant at a time in the named files, builds the tests of their folder and lists "
                    "the changes that no test notices. The working tree is not touched.",
        epilog="example: scripts/mutate.sh --count 40 src/pld")
    parser.add_argument("place", nargs="+", help="a source file or a folder of them, below src/")
    parser.add_argument("--count", type=int, default=20, help="number of changes to try, of those that compile (default 20)")
    parser.add_argument("--seed", type=int, default=1, help="seed of the random choice (default 1)")
    parser.add_argument("--tests", action="append", default=[], help="another test program to run; may be repeated")
    parser.add_argument("--filter", default="*",
                        help="the tests that are run, as --gtest_filter takes them: --filter=-slow.* leaves some out (default all)")
    parser.add_argument("--jobs", type=int, default=2, help="number of changes tried at a time (default 2)")
    parser.add_argument("--seconds", type=int, default=120, help="a test program that runs longer counts as having noticed (default 120)")
    parser.add_argument("--list", action="store_true", help="only list the changes")
    return parser.parse_args()


def sources(places):
    found = []
    for place in places:
        path = (ROOT / place).resolve()
        if not path.exists():
            sys.exit(f"mutate: {place}: no such file or folder")
        files = sorted(path.rglob("*.cpp")) + sorted(path.rglob("*.h")) if path.is_dir() else [path]
        found += [str(file.relative_to(ROOT)) for file in files if not file.stem.endswith("_win32")]
    return list(dict.fromkeys(found))


def main():
    options = arguments()
    files = sources(options.place)
    drawn = [mutation for file in files for mutation in mutations_of(file, (ROOT / file).read_text())]
    random.Random(options.seed).shuffle(drawn)
    if options.list:
        print(*drawn[: options.count], sep="\n")
        return
    programs = sorted({tests_of(file) for file in files}) + options.tests
    workshops = queue.Queue()
    for number in range(options.jobs):
        workshop = Workshop(number + 1, programs, options)
        print(f"preparing build/mutate/{number + 1}", file=sys.stderr)
        workshop.make()
        workshops.put(workshop)

    def one(mutation):
        workshop = workshops.get()
        try:
            return mutation, workshop.try_out(mutation)
        finally:
            workshops.put(workshop)

    results, waiting = [], iter(drawn)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        running = set()
        while True:
            compiled = sum(result != "does not compile" for _, result in results)
            while len(running) < min(options.jobs, options.count - compiled):
                mutation = next(waiting, None)
                if mutation is None:
                    break
                running.add(pool.submit(one, mutation))
            if not running:
                break
            done, running = concurrent.futures.wait(running, return_when=concurrent.futures.FIRST_COMPLETED)
            for future in done:
                results.append(future.result())
                print(*results[-1], sep=": ", flush=True)

    lived = [str(mutation) for mutation, result in results if result == "LIVED"]
    compiled = sum(result != "does not compile" for _, result in results)
    print(f"\n{compiled} changes tried, {compiled - len(lived)} seen, {len(lived)} lived; {len(results) - compiled} did not compile")
    print(*lived, sep="\n")


if __name__ == "__main__":
    os.nice(10)
    main()
