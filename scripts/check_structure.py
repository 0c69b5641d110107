"""Holds the folders of the core, the simulator and the hosts to one picture: who may include whom, downwards only.

Reads every include of the files that git knows under src, sim, capture, apps and include. An include that ROOMS does not allow
fails, and so does a cycle between rooms, a name in ROOMS that nothing needs any more, and a picture in
docs/architecture.md that does not agree with ROOMS. Called by ./test.sh --check.
"""

import pathlib
import posixpath
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "sim", "capture", "apps", "include")
PAGE = "docs/architecture.md"

# A room is a folder, without "src/" ahead of it, or one file that may do more than its folder. From the bottom up: each
# names the rooms above it here that it includes.
ROOMS = {
    "include/tamrix": "",
    "base": "",
    "files": "base",
    "image": "files",
    "verify": "base files image",
    "forms": "base",
    "wxui": "forms",
    "blocks": "include/tamrix base",
    "messages": "base forms",
    "programmer": "include/tamrix base",
    "session": "blocks messages forms programmer",
    "channel": "include/tamrix base forms session",
    "formats": "include/tamrix base files messages session",
    "transfer": "base files forms messages session formats",
    "pld": "base files session",
    "ttl": "include/tamrix pld",
    "ttl/library": "base files messages session channel ttl",
    "ttl/run": "base messages programmer session channel pld ttl ttl/library",
    "ttl/dialogs": "base forms messages session channel pld ttl ttl/library ttl/run",
    "device": "include/tamrix base forms messages session channel",
    "selftest": "base files forms messages session channel",
    "instruments/analyzer": "base forms messages session channel formats",
    "instruments/wave": "include/tamrix base forms messages session channel",
    "entry": "include/tamrix base forms session channel formats transfer pld ttl ttl/run ttl/dialogs device selftest"
             " instruments/analyzer instruments/wave",
    "entry/library.cpp": "include/tamrix wxui messages programmer session formats pld selftest entry",
    "com/server": "",
    "com": "base programmer session entry wxui com/server",
    "sim/part.h": "",
    "sim/signals": "sim/part.h",
    "sim": "include/tamrix base programmer channel sim/part.h sim/signals",
    "sim/chips": "base sim/part.h",
    "sim/chips/tool": "sim/chips",
    "sim/library": "include/tamrix base sim sim/chips",
    "sim/windows": "include/tamrix base programmer com/server sim sim/library",
    "capture": "files",
    "apps/host": "include/tamrix base files image verify",
    "apps/editing": "base files image verify",
    "apps/hexview": "files apps/editing",
    "apps/workbench": "include/tamrix apps/host apps/editing apps/hexview",
    "apps/cli": "base files image verify forms messages session formats transfer pld ttl/library ttl/run ttl/dialogs selftest"
                " instruments/analyzer instruments/wave entry sim/signals sim sim/chips apps/host",
}

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*[<"]([^">]+)[">]', re.MULTILINE)
# Where the build looks for a header, after the folder of the file itself.
ROOTS = ("include", "src", "sim", "apps", ".")


def room_of(path, rooms):
    """None for a file whose folder is no room."""
    for name in (path, posixpath.dirname(path)):
        if name.removeprefix("src/") in rooms:
            return name.removeprefix("src/")
    return None


def included_file(path, name, sources):
    """None for a header from elsewhere."""
    candidates = (posixpath.normpath(posixpath.join(root, name)) for root in (posixpath.dirname(path), *ROOTS))
    return next((one for one in candidates if one in sources), None)


def arrows_of(sources, rooms):
    """(from, to) -> the includes between two rooms, as texts."""
    arrows = {}
    for path, text in sources.items():
        for name in INCLUDE.findall(text):
            target = included_file(path, name, sources)
            ends = (room_of(path, rooms), target and room_of(target, rooms))
            if None not in ends and ends[0] != ends[1]:
                arrows.setdefault(ends, []).append(f'{path} includes "{name}"')
    return arrows


def cycles_of(arrows):
    """Every cycle that a walk along the arrows meets, as lists of rooms."""
    below = {}
    for upper, lower in arrows:
        below.setdefault(upper, []).append(lower)
    found, done = [], set()

    def walk(room, way):
        if room in way:
            found.append(way[way.index(room):] + [room])
        elif room not in done:
            for lower in below.get(room, []):
                walk(lower, way + [room])
            done.add(room)

    for room in below:
        walk(room, [])
    return found


def faults_of_table(rooms):
    above, faults = set(), []
    for room, allowed in rooms.items():
        faults += [f"table: {room} names {one}, which is not above it" for one in allowed.split() if one not in above]
        above.add(room)
    return faults


def faults_of(sources, rooms):
    faults = faults_of_table(rooms)
    faults += [f"{path}: its folder is no room of the table" for path in sources if room_of(path, rooms) is None]
    arrows = arrows_of(sources, rooms)
    for (upper, lower), includes in arrows.items():
        if lower not in rooms[upper].split():
            faults += [f"{include}, but {upper} may not include {lower}" for include in includes]
    for way in cycles_of(arrows):
        steps = [arrows[step][0] for step in zip(way, way[1:])]
        faults.append(f"cycle {' -> '.join(way)}: {'; '.join(steps)}")
    for room, allowed in rooms.items():
        faults += [f"table: {room} includes nothing of {one}" for one in allowed.split() if (room, one) not in arrows]
    return faults


def faults_of_picture(page, rooms):
    """A line of the picture holds rooms ahead of a bar; those that they include have to be on lower lines."""
    lines = re.findall(r"^    (.+?) \|", page.partition("Arrows point down only")[0], re.MULTILINE)
    line_of = {room: number for number, line in enumerate(lines) for room in line.split()}
    faults = [f"{PAGE}: the picture does not name {room}" for room in rooms if room not in line_of]
    faults += [f"{PAGE}: the picture names {room}, which is no room" for room in line_of if room not in rooms]
    return faults or [f"{PAGE}: {room} includes {one}, which is not below it in the picture"
                      for room, allowed in rooms.items() for one in allowed.split() if line_of[room] >= line_of[one]]


def tracked_sources():
    names = subprocess.run(["git", "ls-files", "-z", *FOLDERS], cwd=ROOT, check=True, capture_output=True, text=True)
    paths = [name for name in names.stdout.split("\0") if name.endswith((".h", ".cpp")) and (ROOT / name).is_file()]
    return {path: (ROOT / path).read_text(encoding="utf-8") for path in paths}


def main():
    faults = faults_of(tracked_sources(), ROOMS) + faults_of_picture((ROOT / PAGE).read_text(encoding="utf-8"), ROOMS)
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
