"""Files that a separate model writes, and that the tests compare with the code."""

import sys


def main(folder, wanted, arguments, kept=()):
    """Writes the wanted files (name: text) into `folder`, or with --check compares them with those there.

    `kept` are the names of text files there that nobody writes. Returns an exit status: 1 when files differ.
    """
    if arguments not in ([], ["--check"]):
        print("usage: model.py [--check]", file=sys.stderr)
        return 2
    files = wanted()
    if not arguments:
        for name, text in files.items():
            (folder / name).write_text(text, encoding="utf-8", newline="\n")
        return 0
    found = {path.name: path.read_text(encoding="utf-8") for path in folder.glob("*.txt") if path.name not in kept}
    differing = sorted(name for name in files.keys() | found.keys() if files.get(name) != found.get(name))
    for name in differing:
        print(f"{name}: not as the model writes it")
    return 1 if differing else 0
