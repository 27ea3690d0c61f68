#!/usr/bin/env python3
"""Downloads a file in eight lanes with palvera-cli, aria2, curl, rclone and raw sockets, alternating, and prints the costs.

All of them take the same object from the same bare storage and write it to a file system in memory or, with --disk, to
one on a disk. What each has written is compared with the object after its run. CPU and memory are the operating
system's own accounting of each finished process. Storage and client share this machine: compare the rows of one run.
"""
import argparse
import http.client
import http.server
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time

from contest import (MIB, Platform, Server, alternate, client_environment, make_certificate, measure, print_table,
                     sign_in, write_noise)

ORG, KEY = "org-northlight", "Reel 001 of 230.mov"
ADDRESS = f"orgs/{ORG}/bin/download?key={KEY.replace(' ', '%20').replace('.', '%2E')}"
GIB = 1 << 30
# The object repeats a block of this many bytes. The number of its pages is a prime: no two chunks of the object are the
# same, so one that is written to the place of another is found.
PERIOD = 16_381 * 4096
CPU_GOAL = {False: 1.0, True: 1.3} # seconds for a gigabyte, by whether it is encrypted
PEAK_GOAL = 64                     # MiB: a slice of each lane, and the program
TOOLS = ["aria2c", "curl --parallel", "rclone"]
RAW = "raw sockets"


class Storage(Server):
    """The bare storage as a process of its own."""

    def __init__(self, build, block, size, certificate, key):
        command = [build / "palvera-bare-storage", "--block", block, "--size", str(size)]
        super().__init__(command + (["--certificate", certificate, "--key", key] if certificate else []))
        self.address = self.process.stdout.readline().strip()


class Front(http.server.ThreadingHTTPServer):
    """Passes everything on to the platform. In its answers, the address of a file in the bin leads to other storage."""

    def __init__(self, platform, storage):
        super().__init__(("127.0.0.1", 0), Passing)
        self.platform, self.storage = platform, storage
        self.address = f"http://127.0.0.1:{self.server_port}/api"
        threading.Thread(target=self.serve_forever, daemon=True).start()


class Passing(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        connection = http.client.HTTPConnection("127.0.0.1", self.server.platform.port)
        connection.request(self.command, self.path, body, dict(self.headers))
        answer = connection.getresponse()
        text = answer.read()
        if "/bin/download?" in self.path:
            text = elsewhere(text, self.server.storage.address)
        self.send_response(answer.status)
        for name, value in answer.getheaders():
            if name.lower() != "content-length":
                self.send_header(name, value)
        self.send_header("Content-Length", str(len(text)))
        self.end_headers()
        self.wfile.write(text)

    do_POST = do_GET

    def log_message(self, *_):
        pass


def elsewhere(answer, storage):
    download = json.loads(answer)
    download["url"] = re.sub(r"^https?://[^/]+", storage, download["url"])
    return json.dumps(download).encode()


class WarmMemory:
    """See warm_memory.py."""

    def __init__(self, size):
        self.size = size

    def __enter__(self):
        self.process = subprocess.Popen([sys.executable, pathlib.Path(__file__).with_name("warm_memory.py"),
                                         str(self.size)], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        if not self.process.stdout.readline():
            sys.exit("There is not enough memory.")

    def __exit__(self, *_):
        self.process.communicate()


class Contest:
    """All clients against one storage, into folders of their own below `target`."""

    def __init__(self, arguments, folder, target, size, encrypted):
        self.arguments, self.folder, self.size, self.encrypted = arguments, folder, size, encrypted
        self.target = target / "received"
        self.block = folder / "block"
        certificate, key = (folder / "cert.pem", folder / "key.pem") if encrypted else (None, None)
        self.platform = Platform(arguments.build)
        self.storage = Storage(arguments.build, self.block, size, certificate, key)
        self.front = Front(self.platform, self.storage)
        self.environment = client_environment(folder, self.front.address, certificate)
        sign_in(arguments.build, self.environment, arguments.password)
        self.platform.sign_in(arguments.password)

    def address(self):
        answer = json.dumps(self.platform.call("GET", ADDRESS))
        return json.loads(elsewhere(answer, self.storage.address))["url"]

    # Each client: its command and the files that hold the object one after the other.

    def palvera(self):
        return ([self.arguments.build / "palvera-cli", "--json", "download-bin", ORG, KEY, "--to", self.target],
                [self.target / KEY])

    def aria2(self):
        command = ["aria2c", "--no-conf", "--quiet", "-x8", "-s8", "-k32M", "--file-allocation=none",
                   "-d", self.target, "-o", "object"]
        if self.encrypted:
            command.append(f"--ca-certificate={self.folder / 'cert.pem'}")
        return [*command, self.address()], [self.target / "object"]

    def curl(self):
        """Eight ranges in eight files: it has no way to write them to one, and a copy of them all is not counted."""
        share = -(-self.size // 8)
        files = [self.target / f"part{number}" for number in range(8)]
        lines = ["parallel", "parallel-max = 8", "silent"]
        for number, file in enumerate(files):
            last = min(self.size, (number + 1) * share) - 1
            lines += ["next"] * (number > 0) + ["fail", f'url = "{self.address()}"', f'output = "{file}"',
                                                f'range = "{number * share}-{last}"']
        config = self.folder / "curl.conf"
        config.write_text("\n".join(lines) + "\n")
        return ["curl", "-K", config], files

    def rclone(self):
        """One file in eight streams. It would not pass the signature on, which this storage does not ask for."""
        command = ["rclone", "copyto", "--config", "", "--multi-thread-streams", "8", "--multi-thread-cutoff", "1M",
                   "--http-url", self.storage.address, ":http:object", self.target / "object"]
        if self.encrypted:
            command += ["--ca-cert", self.folder / "cert.pem"]
        return command, [self.target / "object"]

    def raw(self, *options):
        file = self.target / "object"
        return [self.arguments.build / "raw_receiver", self.address(), str(self.size), file, *options], [file]

    def run_one(self, client):
        self.target.mkdir()
        command, files = client()
        os.sync()
        with WarmMemory(self.size + GIB // 2):
            began = time.monotonic()
            cost = measure(command, self.environment, self.storage)
            if self.arguments.disk:
                for file in files:
                    with open(file, "rb") as written:
                        os.fdatasync(written.fileno())
                cost.stored = time.monotonic() - began
        self.require_object(command[0], files)
        shutil.rmtree(self.target)
        return cost

    def require_object(self, client, files):
        """Ends the program unless `files` hold the object and there is nothing else."""
        at = 0
        with open(self.block, "rb") as block:
            for file in files:
                with open(file, "rb") as received:
                    at = compared(received, block, at, client)
        if at != self.size or sorted(files) != sorted(self.target.iterdir()):
            sys.exit(f"{client}: {at} bytes of {self.size} in {[path.name for path in self.target.iterdir()]}")

    def run(self, clients, rounds):
        # The first run makes the machine load the programs and grow its caches: not counted.
        self.run_one(self.palvera)
        costs = alternate(clients, rounds, self.run_one)
        self.stop()
        return costs

    def stop(self):
        self.front.shutdown()
        self.storage.stop()
        self.platform.stop()


def compared(received, block, at, client):
    """Compares the whole file with the object from byte `at` on, and gives the byte after it. Slices are small because
    the memory of this script shows in that of small clients."""
    while True:
        place = at % PERIOD
        block.seek(place)
        expected = block.read(MIB)
        got = received.read(len(expected))
        if got != expected[:len(got)]:
            sys.exit(f"{client}: other bytes than the object's after byte {at}")
        if not got:
            return at
        at += len(got)


def print_goals(costs, gigabytes, encrypted):
    own = costs["palvera-cli"]
    best = {key: min(getattr(costs[tool], key) for tool in TOOLS) for key in ("wall", "cpu")}
    goals = [("wall s, the best tool's", own.wall, best["wall"]),
             ("CPU s/GB, the best tool's", own.cpu / gigabytes, best["cpu"] / gigabytes),
             ("CPU s/GB", own.cpu / gigabytes, CPU_GOAL[encrypted]),
             ("peak MiB", own.peak, PEAK_GOAL)]
    for what, value, most in goals:
        print(f"  {'met   ' if value <= most else 'MISSED'} {what}: {value:.2f}, at most {most:.2f}")


def require_memory(size):
    """The file, or as much of it as a disk has not taken yet, is in memory; and so is what measuring it needs."""
    available = int(re.search(r"MemAvailable: +(\d+) kB", pathlib.Path("/proc/meminfo").read_text())[1]) * 1024
    if available < size + 2 * GIB:
        sys.exit(f"{(size + 2 * GIB) >> 20} MiB of free memory are needed, there are {available >> 20}; see --mib.")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    parser.add_argument("--mib", type=int, default=8192)
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--disk", type=pathlib.Path, help="existing folder on the disk to write to, instead of memory")
    parser.add_argument("--password", default="open-sesame", help="of the sample account")
    arguments = parser.parse_args()
    size = arguments.mib * MIB
    require_memory(size)
    folder = pathlib.Path(tempfile.mkdtemp(prefix="palvera-bench-", dir="/dev/shm"))
    target = pathlib.Path(tempfile.mkdtemp(prefix="palvera-bench-", dir=arguments.disk or folder))
    try:
        write_noise(folder / "block", PERIOD)
        make_certificate(folder)
        print(f"{arguments.mib} MiB to {'the disk' if arguments.disk else 'memory'}, {arguments.rounds} rounds, medians")
        for title, encrypted in (("plain HTTP", False), ("TLS", True)):
            contest = Contest(arguments, folder, target, size, encrypted)
            clients = {"palvera-cli": contest.palvera, "aria2c": contest.aria2, "curl --parallel": contest.curl,
                       "rclone": contest.rclone, RAW: contest.raw}
            if arguments.disk:
                clients["raw, chunks synced"] = lambda: contest.raw("--sync", "chunk")
            costs = contest.run(clients, arguments.rounds)
            print_table(title, costs, size / 1e9, limit=RAW, tools=TOOLS)
            print_goals(costs, size / 1e9, encrypted)
    finally:
        shutil.rmtree(target, ignore_errors=True)
        shutil.rmtree(folder, ignore_errors=True)


main()
