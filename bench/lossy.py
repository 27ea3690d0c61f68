#!/usr/bin/env python3
"""Uploads a file over a line that delays and loses packets, with palvera-cli and curl in eight lanes and with raw
sockets, alternating, and prints what each costs.

The line lies between two network namespaces, which needs root; 25 ms each way, one packet in a thousand lost, a gigabit.
"""
import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from contest import Elsewhere, print_table
from upload import Contest, write_master

HOST, PORT = "10.77.0.1", 8080


def at_the_clients_end(arguments, folder):
    platform = Elsewhere(HOST, PORT)
    for _ in range(100):
        try:
            platform.sign_in(arguments.password)
            break
        except OSError:
            time.sleep(0.1)
    costs = Contest(arguments, folder, platform=platform).run()
    print_table(f"{arguments.delay} ms there and as much back, {arguments.loss:.2%} lost, {arguments.rate} Mbit/s", costs,
                arguments.mib * 1.048576e-3, limit="raw sockets", tools=["curl --parallel"])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    parser.add_argument("--mib", type=int, default=512)
    parser.add_argument("--part-mib", type=int, default=8)
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--delay", type=float, default=25, help="ms, each way")
    parser.add_argument("--loss", type=float, default=0.001)
    parser.add_argument("--rate", type=float, default=1000, help="Mbit/s")
    parser.add_argument("--password", default="open-sesame", help="of the sample account")
    parser.add_argument("--folder", type=pathlib.Path, help="of the file, where the line is there already")
    arguments = parser.parse_args()
    if arguments.folder:
        return at_the_clients_end(arguments, arguments.folder)
    folder = pathlib.Path(tempfile.mkdtemp(prefix="palvera-bench-", dir="/dev/shm"))
    try:
        write_master(arguments, folder)
        print(f"{arguments.mib} MiB in parts of {arguments.part_mib} MiB, {arguments.rounds} rounds, medians", flush=True)
        line = [arguments.build / "palvera-local-line", "--delay", str(arguments.delay), "--loss", str(arguments.loss),
                "--rate", str(arguments.rate), "--queue", str(4 << 20)]
        platform = [arguments.build / "palvera-local-platform", "--address", HOST, "--port", str(PORT), "--discard",
                    "--part-size", str(arguments.part_mib << 20)]
        client = [sys.executable, "-B", *sys.argv, "--folder", folder]
        return subprocess.run([*line, *platform, "--and", *client], check=False).returncode
    finally:
        shutil.rmtree(folder, ignore_errors=True)


sys.exit(main())
