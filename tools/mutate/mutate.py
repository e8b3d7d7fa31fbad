"""Puts small faults into the logic, one at a time, and says which of them the tests notice. scripts/mutate calls it."""

import argparse
import contextlib
import dataclasses
import difflib
import fcntl
import json
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import faults

ROOT = Path(__file__).resolve().parents[2]
HERE = ROOT / "build" / "mutate"
TREE = HERE / "tree"
BUILD = HERE / "build"
LAST = HERE / "last.json"
SURVIVORS = HERE / "survivors.txt"
QUICK = 2.0  # seconds; longer end-to-end tests come last
LARGEST_FILE = 64 << 20  # bytes that a faulty test may write to one file
LARGEST_MEMORY = 8 << 30


def say(text=""):
    print(text, flush=True)


# Which faults


def is_logic(path):
    """Whether a source file is logic that runs here: neither a window, nor what windows stand on, nor Windows' own."""
    folders = path.parts[1:-1]
    drawing = folders[0] in ("app", "ui") or folders[:2] in (("drawn", "widgets"), ("drawn", "faces"))
    return not drawing and not {"forms", "qt", "windows"}.intersection(folders)


def rooms(tree):
    """The logic folders of src/, each with its faults and its lines of code."""
    result = {}
    for path in sorted(tree.glob("src/**/*")):
        relative = path.relative_to(tree)
        if path.suffix not in (".cpp", ".h") or len(relative.parts) < 3 or not is_logic(relative):
            continue
        text = path.read_text()
        room = result.setdefault("/".join(relative.parts[1:-1]), {"faults": [], "lines": 0})
        room["faults"] += faults.find(str(relative), text)
        room["lines"] += sum(1 for line in text.splitlines() if line.strip() and not line.strip().startswith("//"))
    return result


def draw(name, found, seed):
    """The faults of one room in an order that depends on seed and room alone; at most one for a line."""
    chance = random.Random(f"{seed}/{name}")
    left = {kind: [f for f in found if f.kind == kind] for kind in faults.KINDS}
    taken = set()
    while any(left.values()):
        kinds = [kind for kind in faults.KINDS if left[kind]]
        kind = chance.choices(kinds, [faults.KINDS[k] for k in kinds])[0]
        fault = left[kind].pop(chance.randrange(len(left[kind])))
        if (fault.file, fault.line) not in taken:
            taken.add((fault.file, fault.line))
            yield fault


def shares(sizes, count):
    """How many of `count` faults each room gets: by its size, and one at least where there are enough."""
    least = 1 if count >= len(sizes) else 0
    whole = sum(sizes.values())
    exact = {name: max(least, count * size / whole) for name, size in sizes.items()}
    result = {name: int(value) for name, value in exact.items()}
    by_rest = sorted(exact, key=lambda name: (result[name] - exact[name], name))
    while sum(result.values()) < count:
        result[by_rest[0]] += 1
        by_rest.append(by_rest.pop(0))
    while sum(result.values()) > count:
        result[max(result, key=lambda name: (result[name], name))] -= 1
    return result


# The copy of the tree, and its build


def copy_tree():
    """Brings the copy up to date; a file that did not change keeps its time, so that it is not built again."""
    command = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    listed = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=True).stdout
    wanted = {name for name in listed.split("\0") if name and (ROOT / name).is_file()}
    for path in TREE.glob("**/*"):
        if path.is_file() and str(path.relative_to(TREE)) not in wanted:
            path.unlink()
    for name in wanted:
        source, target = ROOT / name, TREE / name
        if not target.exists() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
            target.chmod(source.stat().st_mode)
    manual = HERE / "docs"  # where the programs look for it, seen from BUILD
    if not manual.is_symlink():
        manual.symlink_to(TREE / "docs")


def configure():
    """Without optimisation and warnings, which would only take time; a step beyond a container's end stops a test."""
    subprocess.run(
        ["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "--log-level=WARNING", "-DCMAKE_BUILD_TYPE=None"]
        + ["-DCMAKE_CXX_FLAGS=-O0 -w -D_GLIBCXX_ASSERTIONS"],
        check=True,
    )


def ninja(targets, jobs):
    done = subprocess.run(["ninja", "-C", BUILD, f"-j{jobs}", *targets], capture_output=True, text=True)
    return done.returncode == 0, done.stdout + done.stderr


def programs():
    """The test programs, each with the libraries of the project that are linked into it."""

    def asked(*question):
        command = ["ninja", "-C", BUILD, "-t", *question]
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout

    names = re.findall(r"^tests/(\w+_tests): CXX_EXECUTABLE", asked("targets", "all"), re.M)
    return {n: set(re.findall(r"libtvx_(\w+)\.a$", asked("inputs", f"tests/{n}"), re.M)) for n in names}


# Running tests


@dataclasses.dataclass
class Step:
    """A test program, or some tests of it, with the time that it took without a fault."""

    program: str
    tests: str = "*"
    seconds: float = 0.0

    def limit(self):
        return 15 + 6 * self.seconds


def run(step, environment):
    """Whether the tests pass, and the test that failed or why they ended."""
    command = [BUILD / "tests" / step.program, "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={step.tests}"]

    def own_limits():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_FSIZE, (LARGEST_FILE, LARGEST_FILE))
        resource.setrlimit(resource.RLIMIT_AS, (LARGEST_MEMORY, LARGEST_MEMORY))

    with tempfile.TemporaryDirectory(dir=HERE) as folder, open(f"{folder}/output", "w+b") as output:
        process = subprocess.Popen(
            command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
            start_new_session=True, preexec_fn=own_limits,
        )  # fmt: skip
        try:
            status = process.wait(step.limit())
        except subprocess.TimeoutExpired:
            status = None
        with contextlib.suppress(ProcessLookupError):  # whatever the tests started ends with them
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        output.seek(0)
        text = output.read().decode(errors="replace")
    if status == 0:
        return True, ""
    failed = re.search(r"^\[  FAILED  \] ([\w./]+)", text, re.M)
    if failed:
        return False, failed.group(1)
    return False, "time limit" if status is None else f"signal {-status}" if status < 0 else f"status {status}"


def test_seconds(program, environment):
    """How long each test of a program takes; the program has to pass."""
    done = subprocess.run([BUILD / "tests" / program], cwd=HERE, env=environment, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{program} fails without a fault:\n{done.stdout[-3000:]}{done.stderr[-1000:]}")
    found = re.findall(r"^\[       OK \] (\S+?)(?:,.*)? \((\d+) ms\)$", done.stdout, re.M)
    return {name: int(milliseconds) / 1000 for name, milliseconds in found}


class Bench:
    """The copy of the tree, into which one fault after another is put."""

    def __init__(self, jobs, rooms_only):
        self.jobs = jobs
        self.environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", TVX_SOURCE_DIR=str(TREE))
        configure()
        say("Building the tests without a fault, and running them once ...")
        self.programs = {n: linked for n, linked in programs().items() if not (rooms_only and n == "e2e_tests")}
        well, output = ninja([f"tests/{name}" for name in self.programs], jobs)
        if not well:
            sys.exit(output[-3000:])
        self.steps = {}
        for name in self.programs:
            times = test_seconds(name, self.environment)
            self.steps[name] = [Step(name, "*", sum(times.values()))]
            if name == "e2e_tests":
                quick = {test for test, seconds in times.items() if seconds < QUICK}
                parts = [quick, times.keys() - quick]
                self.steps[name] = [Step(name, ":".join(sorted(p)), sum(times[t] for t in p)) for p in parts if p]

    def order(self, room):
        """The steps for a fault in a room: its own tests, those of rooms that use it, the end-to-end ones."""
        library = room.replace("/", "_")
        own = library + "_tests"
        while own not in self.programs and "_" in own[: -len("_tests")]:  # else those of the folder around it
            own = own[: -len("_tests")].rpartition("_")[0] + "_tests"
        known = any(library in linked for linked in self.programs.values())
        users = [name for name, linked in self.programs.items() if not known or library in linked or name == own]
        users.sort(key=lambda name: (name != own, name == "e2e_tests", sum(s.seconds for s in self.steps[name])))
        return [step for name in users for step in self.steps[name]]

    def try_fault(self, room, fault):
        """What noticed the fault; empty where it survived; None where it does not compile."""
        path = TREE / fault.file
        text = path.read_text()
        path.write_text(text[: fault.start] + fault.after + text[fault.end :])
        try:
            for step in self.order(room):
                if not ninja([f"tests/{step.program}"], self.jobs)[0]:
                    return None
                passed, why = run(step, self.environment)
                # A test with real sockets may fail on a busy machine: it must fail twice.
                if not passed and step.program == "e2e_tests":
                    passed, why = run(step, self.environment)
                if not passed:
                    return f"{step.program}: {why}"
            return ""
        finally:
            path.write_text(text)


# What is told


def fragment(text):
    text = " ".join(text.split())
    return text if len(text) <= 60 else text[:57] + "..."


def change(fault, text):
    """Before and after, with what stands beside it where that is short."""
    around = 0 if len(fault.before) > 15 else 15
    left = text[max(text.rfind("\n", 0, fault.start) + 1, fault.start - around) : fault.start]
    right = text[fault.end : min(text.find("\n", fault.end), fault.end + around)]
    return f"`{fragment(left + fault.before + right)}` -> `{fragment(left + fault.after + right)}`"


def difference(fault, text):
    faulty = text[: fault.start] + fault.after + text[fault.end :]
    lines = difflib.unified_diff(text.splitlines(), faulty.splitlines(), fault.file, fault.file, lineterm="", n=2)
    return "\n".join(lines)


def tell(number, count, fault, text, verdict=None):
    head = f"[{number:3}/{count}] {fault.file}:{fault.line}  {fault.kind}"
    end = "" if verdict is None else "  SURVIVED" if verdict == "" else f"  noticed, {verdict}"
    say(f"{head}  {change(fault, text)}{end}")


def key(fault, text):
    """What finds a fault again after its file was changed elsewhere."""
    return [fault.file, text.splitlines()[fault.line - 1].strip(), fault.kind, fault.before, fault.after]


def survivors_of_last_time(found, tree):
    wanted = json.loads(LAST.read_text())["survivors"] if LAST.exists() else []
    for name, room in found.items():
        for fault in room["faults"]:
            if key(fault, (tree / fault.file).read_text()) in wanted:
                yield name, fault


def chosen(options, tree):
    """A list of rooms, each with its number of faults and the faults in their order."""
    found = rooms(tree)
    if options.again:
        again = list(survivors_of_last_time(found, tree))
        names = dict.fromkeys(name for name, _ in again)
        return [(name, sum(n == name for n, _ in again), [f for n, f in again if n == name]) for name in names]
    for name in options.room:
        if name not in found:
            sys.exit(f"There is no room {name}; there are {', '.join(found)}.")
    found = {name: room for name, room in found.items() if name in (options.room or found)}
    share = shares({name: room["lines"] for name, room in found.items()}, options.count)
    return [(name, share[name], list(draw(name, room["faults"], options.seed))) for name, room in found.items()]


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description=__doc__)
    parser.add_argument("--seed", type=int, default=1, help="another seed chooses other faults (1)")
    parser.add_argument("--count", type=int, default=200, help="how many faults (200)")
    parser.add_argument("--room", action="append", default=[], help="only in this folder of src/; more than once for several")
    parser.add_argument("--list", action="store_true", help="only list the faults that are chosen")
    parser.add_argument("--again", action="store_true", help="only those that survived last time")
    parser.add_argument("--rooms-only", action="store_true", help="without the end-to-end tests, which take longest")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="compilers at a time")
    options = parser.parse_args()

    if options.list:
        listed = [f for _, share, order in chosen(options, ROOT) for f in order[:share]]
        for number, fault in enumerate(listed, 1):
            tell(number, len(listed), fault, (ROOT / fault.file).read_text())
        return
    HERE.mkdir(parents=True, exist_ok=True)
    with open(HERE / "lock", "w") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            sys.exit("It runs already: there is only one copy of the tree.")
        copy_tree()  # from here on the project's own folder may be worked in
        work(chosen(options, TREE), Bench(options.jobs, options.rooms_only))


def work(plan, bench):
    count = sum(share for _, share, _ in plan)
    tried, survived, broken, started = 0, [], 0, time.monotonic()
    try:
        for name, share, order in plan:
            well = 0
            for fault in order:
                if well == share:
                    break
                verdict = bench.try_fault(name, fault)
                if verdict is None:
                    broken += 1
                    continue
                well, tried = well + 1, tried + 1
                tell(tried, count, fault, (TREE / fault.file).read_text(), verdict)
                if verdict == "":
                    survived.append(fault)
    except KeyboardInterrupt:
        say("Stopped.")
    finish(tried, survived, broken, time.monotonic() - started)


def finish(tried, survived, broken, seconds):
    texts = [(fault, (TREE / fault.file).read_text()) for fault in survived]
    differences = [difference(fault, text) for fault, text in texts]
    SURVIVORS.write_text("\n\n".join(differences) + "\n")
    LAST.write_text(json.dumps({"survivors": [key(fault, text) for fault, text in texts]}, indent=1))
    for text in differences:
        say("\n" + text)
    if tried:
        noticed = tried - len(survived)
        say(f"\n{noticed} of {tried} faults were noticed: {100 * noticed / tried:.1f} %.")
        say(f"{broken} more did not compile. It took {seconds / 60:.0f} minutes.")
        say(f"The survivors are in {SURVIVORS.relative_to(ROOT)}.")


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # `--list | head` is no error
    for stop in (signal.SIGINT, signal.SIGTERM):  # ends with what it has found so far, in the background too
        signal.signal(stop, signal.default_int_handler)
    main()
