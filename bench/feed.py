#!/usr/bin/env python3
"""Compares, in turn within one run, the user time of corvane-feed with that of wc -w on the same bulletins: the minimum
and the median of the rounds. With --stream it then pipes the bulletins in again and again and shows the memory that
corvane-feed needed at most.

usage: bench/feed.py [--rounds N] [--copies N] [--stream MEGABYTES] CORVANE-FEED BULLETINS..."""
import argparse
import os
import statistics
import subprocess
import tempfile


def milliseconds(command):
    """The user time of a command; its output is discarded."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               env=dict(os.environ, LC_ALL="C.UTF-8"))
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.WEXITSTATUS(status) if os.WIFEXITED(status) else -1
    if process.returncode not in (0, 1):  # 1: some parts of the bulletins were refused
        raise RuntimeError(f"{command[0]} failed")
    return usage.ru_utime * 1000


def compare(program, bulletins, rounds):
    with tempfile.NamedTemporaryFile() as file:
        file.write(bulletins)
        file.flush()
        commands = {"wc -w": ["wc", "-w", file.name], "corvane-feed": [program, "--quiet", file.name]}
        taken = {name: [] for name in commands}
        for _ in range(rounds):
            for name, command in commands.items():
                taken[name].append(milliseconds(command))
    print(f"{len(bulletins) / 1e6:.1f} MB of bulletins {'minimum ms':>12} {'median ms':>10} {'x wc':>6}")
    floor = statistics.median(taken["wc -w"])
    for name, times in taken.items():
        median = statistics.median(times)
        ratio = f"{median / floor:.2f}" if floor > 0 else "-"  # the clock may not see a short run
        print(f"{name:20} {min(times):15.1f} {median:10.1f} {ratio:>6}")


def peak_memory(process):
    """What a running process has needed at most, in kB. The usage of a child would count this program, too."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))


def stream(program, bulletins, megabytes):
    process = subprocess.Popen([program, "--quiet"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    written = 0
    while written < megabytes * 1e6:
        written += process.stdin.write(bulletins)
    process.stdin.flush()
    print(f"a stream of {written / 1e6:.0f} MB: {peak_memory(process)} kB at most")
    process.stdin.close()
    process.wait()


def main():
    parser = argparse.ArgumentParser(description="corvane-feed beside wc -w, and its memory for a long stream")
    parser.add_argument("program", metavar="CORVANE-FEED")
    parser.add_argument("bulletins", metavar="BULLETINS", nargs="+")
    parser.add_argument("--rounds", type=int, default=25)
    parser.add_argument("--copies", type=int, default=10, help="copies of the bulletins in the file that is read")
    parser.add_argument("--stream", type=float, metavar="MEGABYTES", help="measure the memory for a stream, too")
    arguments = parser.parse_args()
    bulletins = b""
    for name in arguments.bulletins:
        with open(name, "rb") as file:
            bulletins += file.read()
    compare(arguments.program, bulletins * arguments.copies, arguments.rounds)
    if arguments.stream:
        stream(arguments.program, bulletins, arguments.stream)


main()
