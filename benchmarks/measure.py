#!/usr/bin/python3 -B
"""Takes every measurement and writes the tables of docs/performance.md; benchmarks/run starts it."""

import json
import math
import os
import re
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from desktop import CONTROL, SILENT, Bus, Screen, wait_until

ROOT = Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs/performance.md"
BUILD = ROOT / "build/benchmarks"
BUNDLE = BUILD / "Driver Manager.app"
APPLICATION = [BUNDLE / "Contents/MacOS/Driver Manager"]
PROGRAMS = {"application": APPLICATION}
PROGRAMS |= {name: [BUILD / "benchmarks/peers" / name, BUNDLE] for name in ("least", "qml", "widgets")}
REPEATED = BUILD / "benchmarks/repeated"
CAMERA = "com.kelvra.ip-camera.cmio"
QUICK = "--quick" in sys.argv
ROUNDS = range(3 if QUICK else 15)
SECONDS_AT_REST = 3600 if "--hour" in sys.argv else 10 if QUICK else 120
MARK = "<!-- benchmarks/run writes what is between this line and its twin. -->\n"


def main():
    if set(sys.argv[1:]) - {"--quick", "--hour"}:
        sys.exit("run: unknown option; the first lines of benchmarks/run say what there is")
    subprocess.run([BUILD / "bin/sysextctl", "applications", BUILD], check=True)
    subprocess.run([BUILD / "bin/sysextctl", "install", CAMERA, "2.1", "2105"], check=True)
    screen, bus = Screen(), Bus()
    rows = [row for measure in (size, start, inside, service, idle, answer) for row in measure(screen, bus)]
    goals = table(("what", "figure", "goal", "reached"), *[row for row in rows if len(row) == 4])
    others = table(("what", "figure"), *[row for row in rows if len(row) == 2])
    processor = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())[1]
    tables = f"\nThe machine: {processor}, {os.cpu_count()} cores.\n\n{goals}\n{others}\n"
    before, _, after = PAGE.read_text().split(MARK)
    page = MARK.join((before, tables, after))
    print(page) if QUICK else PAGE.write_text(page)


def table(*rows):
    """Its first row is the heading."""
    lines = ["| " + " | ".join(row) + " |\n" for row in rows]
    return "".join([lines[0], "|---" * len(rows[0]) + "|\n", *lines[1:]])


def goal(what, figure, limit, form="{:.2f}", bound="at most"):
    """A row of the first table."""
    reached = figure >= limit if bound == "at least" else figure <= limit
    return what, form.format(figure), f"{bound} {form.format(limit)}", "yes" if reached else "no"


def used_by(process):
    """Its processor time in ms; what is resident, in MiB; and how often its threads have waited and were woken."""
    resident = int(re.search(r"VmRSS:\s+(\d+)", Path(f"/proc/{process}/status").read_text())[1]) / 1024
    threads = [thread.read_text() for thread in Path(f"/proc/{process}/task").glob("*/status")]
    wakes = [int(re.search(r"\nvoluntary_ctxt_switches:\s+(\d+)", thread)[1]) for thread in threads]
    return 1e3 * time.clock_gettime((~process << 3) | 2), resident, sum(wakes)


def instructions(command, during=subprocess.Popen.wait, last_function=None, **environment):
    """Millions that the program executes until `during` returns, or up to the end of the first call of a function."""
    with tempfile.TemporaryDirectory() as folder:
        out = Path(folder, "out.1" if last_function else "out")
        tool = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out", f"--dump-after={last_function}*"]
        output = {"stdout": subprocess.PIPE, "stderr": subprocess.DEVNULL}
        program = subprocess.Popen([*tool, *command], env=os.environ | environment, **output)
        if last_function:
            wait_until(lambda: out.exists() and "totals:" in out.read_text())
        else:
            during(program)
        program.terminate()
        program.communicate()
        return int(re.search(r"^(?:summary|totals): (\d+)", out.read_text(), re.MULTILINE)[1]) / 1e6


def repeated(names, *options, **environment):
    """The median times in ms, in all and of the processor, that each of these takes once."""
    with tempfile.NamedTemporaryFile("r") as out:
        command = [REPEATED, f"--benchmark_filter=^({names})(/|$)", f"--benchmark_out={out.name}", *options]
        subprocess.run(command, check=True, env=os.environ | environment, **SILENT)
        told = [run for run in json.load(out)["benchmarks"] if run.get("aggregate_name", "median") == "median"]
    return {run["run_name"].split("/iter")[0]: (run["real_time"], run["cpu_time"]) for run in told}


IN_TURN = ("--benchmark_repetitions=5", "--benchmark_min_time=0.1", "--benchmark_enable_random_interleaving=true")


def medians(rounds):
    return [statistics.median(values) for values in zip(*rounds)]


def size(*_):
    with tempfile.NamedTemporaryFile() as stripped:
        subprocess.run(["strip", "-o", stripped.name, *APPLICATION], check=True)
        yield goal("stripped executable", os.path.getsize(stripped.name) / 1024, 450, "{:.0f} KiB")


def start(screen, _):
    rounds = [{name: first_frame(screen, command) for name, command in PROGRAMS.items()} for _ in ROUNDS]
    figures = {name: medians(each[name] for each in rounds) for name in PROGRAMS}
    for name, command in PROGRAMS.items():
        figures[name].append(instructions(command, last_function="QBackingStore::flush"))
        text = "{:.1f} ms of the processor, {:.1f} MiB, {:.1f} ms in all, {:.1f} million instructions"
        yield f"start: *{name}*", text.format(*figures[name])
    own = figures["application"]
    yield goal("start, against *least*: instructions", own[3] / figures["least"][3], 1.12)
    yield goal("start, against *least*: processor time", own[0] / figures["least"][0], 1.1)
    yield goal("start, against *least*: memory", own[1] - figures["least"][1], 1.5, "{:+.1f} MiB")
    for name, processor, resident in (("qml", 0.5, 0.66), ("widgets", 1, 1)):
        yield goal(f"start, against *{name}*: processor time", own[0] / figures[name][0], processor)
        yield goal(f"start, against *{name}*: memory", own[1] / figures[name][1], resident)


def first_frame(screen, command):
    """Stops the program when the display has drawn its first frame, reads what it took, and ends it."""
    begin = time.monotonic()
    program = subprocess.Popen(command, **SILENT)
    screen.wait_for_frame()
    program.send_signal(signal.SIGSTOP)
    wall = 1e3 * (time.monotonic() - begin)
    frame = (*used_by(program.pid)[:2], wall)
    screen.end(program)
    return frame


def inside(*_):
    offscreen = {"QT_QPA_PLATFORM": "offscreen"}
    times = repeated("paint.*|layOut", *IN_TURN, **offscreen)
    counts = {}
    for name, (_, processor) in times.items():
        command = [REPEATED, f"--benchmark_filter=^{name}(/iterations|$)"]
        low, high = (10, 30) if "paint" in name else (1, 2)
        few, more = (instructions(command, REPETITIONS=str(number), **offscreen) for number in (low, high))
        counts[name] = (more - few) / (high - low)
        yield f"*{name}*", f"{processor:.2f} ms of the processor, {counts[name]:.2f} million instructions"
    ratio = counts["paintChanged"] / counts["paintAlone"]
    yield goal("*paintChanged* against *paintAlone*: instructions", ratio, 1.3)
    exponent = math.log(counts["layOut/10000"] / counts["layOut/100"], 100)
    yield goal("*layOut*, 100 to 10,000 records: exponent of the instructions", exponent, 1.05, "{:.3f}")


def service(_, bus):
    bus.stop_service()
    read, change = (1e6 / wall for wall, _ in repeated("ask", *IN_TURN).values())
    yield goal("service: reads a second", read, 11670, "{:,.0f}", "at least")
    yield goal("service: changes a second", change, 7340, "{:,.0f}", "at least")
    yield goal("service: memory after 50,000 answers", used_by(bus.service())[1] * 1.048576, 25, "{:.1f} MB")
    first = statistics.median(first_answer(bus) for _ in ROUNDS)
    yield goal("service: first answer after its start", first, 30, "{:.0f} ms")
    first, read, change = (served(bus, kind) for kind in ("", "read", "change"))
    yield "service: start and first answer", f"{first:.1f} million instructions"
    yield "service: a read", f"{read - first:.0f} thousand instructions"
    yield "service: a change", f"{change - first:.0f} thousand instructions"


def first_answer(bus):
    """From nothing to the first answer, in ms. The bus starts the service."""
    bus.stop_service()
    begin = time.monotonic()
    bus.call("ListCopies", of=CONTROL)
    return 1e3 * (time.monotonic() - begin)


def served(bus, kind):
    """The instructions of the service from its start until it has answered once, or a thousand calls of a kind."""
    bus.stop_service()
    ask = (lambda: repeated(f"ask/{kind}", REPETITIONS="1")) if kind else lambda: bus.call("ListCopies", of=CONTROL)
    return instructions([BUILD / "bin/sysextd"], lambda _: (wait_until(bus.service), ask()))


def idle(screen, bus):
    windows = [subprocess.Popen(command, **SILENT) for command in (APPLICATION, [BUILD / "bin/SystemSettings"])]
    time.sleep(5 if QUICK else 40)  # what follows the start; Qt's threads wait half a minute for more work
    processes = {"application": windows[0].pid, "service": bus.service(), "settings": windows[1].pid}
    before = {name: used_by(process) for name, process in processes.items()}
    time.sleep(SECONDS_AT_REST)
    for name, process in processes.items():
        processor, _, wakes = (now - then for now, then in zip(used_by(process), before[name]))
        yield goal(f"{SECONDS_AT_REST:,} s at rest: wake-ups of the {name}", wakes, 0, "{}")
        yield f"{SECONDS_AT_REST:,} s at rest: the {name}", f"{processor:.1f} ms of the processor"
    for window in windows:
        screen.end(window)


def answer(screen, bus):
    bus.stand_in(CAMERA)
    printed, silent = medians(answered(screen, bus) for _ in ROUNDS)
    yield goal("10,000 instances: until they are printed", printed, 45, "{:.0f} ms")
    yield goal("10,000 instances: longest silence of the window", silent, 16, "{:.0f} ms")
    few, more = (instructions(APPLICATION, lambda program: bus.answer(count, program)) for count in (1, 10_001))
    yield "10,000 instances", f"{more - few:.1f} million instructions"


def answered(screen, bus):
    """The ms until the application has printed an answer, and the longest silence of its window meanwhile."""
    program = subprocess.Popen(APPLICATION, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    screen.wait_for_frame()
    time.sleep(0.5)  # what follows the start
    bus.answer(10_000)
    begin = time.monotonic()
    with ThreadPoolExecutor() as pool:
        printed = pool.submit(lambda: program.stdout.readline() and time.monotonic())
        silence = screen.longest_silence(lambda: printed.done() and time.monotonic() > printed.result() + 0.2)
    screen.end(program)
    return 1e3 * (printed.result() - begin), 1e3 * silence


if __name__ == "__main__":
    main()
