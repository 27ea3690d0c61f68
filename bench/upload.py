#!/usr/bin/env python3
"""Uploads a file in eight lanes with palvera-cli, curl and raw sockets, alternating, and prints what each costs.

All three send the same bytes, from the page cache, to the local platform's storage, which throws them away. CPU and
memory are the operating system's own accounting of each finished process. Absolute times depend on the machine and on
what else it does: compare the columns of one run.
"""
import argparse
import http.client
import json
import os
import pathlib
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

MIB = 1 << 20
ORG, PROJECT = "org-northlight", "salt"


class Platform:
    """The local platform as a process of its own, bytes thrown away."""

    def __init__(self, build, folder, part_size, certificate):
        command = [build / "palvera-local-platform", "--port", "0", "--discard", "--part-size", str(part_size)]
        if certificate:
            command += ["--tls", folder / "cert.pem", folder / "key.pem"]
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        for line in self.process.stdout:
            if found := re.match(r"PV_API=(http://127\.0\.0\.1:(\d+)/api)", line):
                self.address, self.port = found[1], int(found[2])
            if "password" in line.lower() and "@" in line:
                break
        self.cookie = ""

    def call(self, path, body):
        connection = http.client.HTTPConnection("127.0.0.1", self.port)
        headers = {"Accept": "application/json", "Content-Type": "application/json"}
        if self.cookie:
            headers["Cookie"] = self.cookie
        connection.request("POST", "/api/" + path, json.dumps(body), headers)
        answer = connection.getresponse()
        text = answer.read()
        if answer.status >= 300:
            sys.exit(f"{path}: {answer.status} {text!r}")
        if cookie := answer.getheader("Set-Cookie"):
            self.cookie = cookie.split(";")[0]
        return json.loads(text or "{}")

    def signed_addresses(self, row, size):
        base = f"orgs/{ORG}/projects/{PROJECT}/deliverables/{row}/transfer"
        started = self.call(base + "/start",
                            {"filename": "bench.mov", "contentType": "video/quicktime", "byteSize": size})
        addresses = []
        for first in range(1, started["partCount"] + 1, 16):
            last = min(first + 15, started["partCount"])
            answer = self.call(base + "/parts", {"object": started["object"], "uploadId": started["uploadId"],
                                                 "from": first, "to": last})
            addresses += [url["url"] for url in sorted(answer["urls"], key=lambda each: each["partNumber"])]
        return addresses

    def cpu(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait()


def measure(command, environment, platform):
    """Runs `command` and gives wall seconds, its CPU seconds, the platform's, and peak memory in MiB."""
    server = platform.cpu()
    began = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    errors = process.stderr.read().decode()
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.monotonic() - began
    if status != 0:
        sys.exit(f"{command[0]} failed: {errors[-2000:]}")
    return wall, usage.ru_utime + usage.ru_stime, platform.cpu() - server, usage.ru_maxrss / 1024


def make_certificate(folder):
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
                    "-addext", "subjectAltName=IP:127.0.0.1,DNS:localhost", "-keyout", folder / "key.pem",
                    "-out", folder / "cert.pem"], check=True, capture_output=True)


def write_curl_config(path, pieces, addresses):
    lines = ["parallel", "parallel-max = 8", "silent", "fail", 'header = "Expect:"']
    for piece, address in zip(pieces, addresses):
        lines += [f'upload-file = "{piece}"', f'url = "{address}"', "output = /dev/null"]
    path.write_text("\n".join(lines) + "\n")


class Contest:
    def __init__(self, arguments, folder, certificate):
        self.arguments, self.folder = arguments, folder
        self.size = arguments.mib * MIB
        self.part = arguments.part_mib * MIB
        self.platform = Platform(arguments.build, folder, self.part, certificate)
        self.environment = dict(os.environ, PV_API=self.platform.address, XDG_DATA_HOME=str(folder / "data"),
                                XDG_STATE_HOME=str(folder / "state"), XDG_CONFIG_HOME=str(folder / "config"),
                                XDG_CACHE_HOME=str(folder / "cache"))
        if certificate:
            self.environment["SSL_CERT_FILE"] = self.environment["CURL_CA_BUNDLE"] = str(folder / "cert.pem")
        self.row = 3
        self.sign_in()

    def sign_in(self):
        email, password = "hana@kestrel.example", self.arguments.password
        subprocess.run([self.arguments.build / "palvera-cli", "sign-in", "--email", email, "--password-stdin"],
                       input=password, text=True, env=self.environment, check=True, stdout=subprocess.DEVNULL)
        self.platform.call("auth/login", {"email": email, "password": password})

    def next_row(self):
        self.row += 1
        return f"{PROJECT}-row-{4 + self.row % 15}"

    def palvera(self):
        return [self.arguments.build / "palvera-cli", "--json", "upload", ORG, PROJECT, self.next_row(),
                self.folder / "master.mov"]

    def curl(self):
        config = self.folder / "curl.conf"
        pieces = sorted((self.folder / "pieces").iterdir())
        write_curl_config(config, pieces, self.platform.signed_addresses(self.next_row(), self.size))
        return ["curl", "-K", config]

    def raw(self):
        addresses = self.folder / "addresses"
        addresses.write_text("\n".join(self.platform.signed_addresses(self.next_row(), self.size)) + "\n")
        return [self.arguments.build / "raw_sender", self.folder / "master.mov", str(self.part), addresses]

    def run(self):
        clients = {"palvera-cli": self.palvera, "curl --parallel": self.curl, "raw sockets": self.raw}
        figures = {name: [] for name in clients}
        for _ in range(self.arguments.rounds):
            for name, command in clients.items():
                figures[name].append(measure(command(), self.environment, self.platform))
        self.platform.stop()
        return {name: [statistics.median(column) for column in zip(*rows)] for name, rows in figures.items()}


def print_table(title, figures, gigabytes):
    print(f"\n{title}\n{'client':18}{'wall s':>8}{'GB/s':>7}{'CPU s/GB':>10}{'x raw':>7}{'storage':>9}{'peak MiB':>10}")
    limit = figures["raw sockets"][1]
    for name, (wall, cpu, server, peak) in figures.items():
        print(f"{name:18}{wall:8.2f}{gigabytes / wall:7.2f}{cpu / gigabytes:10.3f}{cpu / limit:7.2f}"
              f"{server / gigabytes:9.3f}{peak:10.0f}")


def memory_run(arguments, folder):
    """A sparse file of 16 GiB: the peak must not grow with the file."""
    contest = Contest(arguments, folder, False)
    with open(folder / "sparse.mov", "wb") as sparse:
        sparse.truncate(16 << 30)
    wall, cpu, _, peak = measure([arguments.build / "palvera-cli", "--json", "upload", ORG, PROJECT,
                                  contest.next_row(), folder / "sparse.mov"], contest.environment, contest.platform)
    contest.platform.stop()
    bound = 8 * arguments.part_mib + 60
    print(f"\n16 GiB sparse file: {wall:.1f} s, {cpu / 17.18:.3f} CPU s/GB, peak {peak:.0f} MiB (bound {bound} MiB)")
    return peak <= bound


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    parser.add_argument("--mib", type=int, default=8192)
    parser.add_argument("--part-mib", type=int, default=32)
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--password", default="open-sesame", help="of the sample account")
    arguments = parser.parse_args()
    # In memory, so that no disk is measured.
    folder = pathlib.Path(tempfile.mkdtemp(prefix="palvera-bench-", dir="/dev/shm"))
    try:
        master = folder / "master.mov"
        with open(master, "wb") as out:
            subprocess.run(f"openssl enc -aes-128-ctr -nosalt -K 00 -iv 00 -in /dev/zero 2>/dev/null | head -c {arguments.mib * MIB}",
                           shell=True, stdout=out, check=True)
        (folder / "pieces").mkdir()
        subprocess.run(["split", "-b", str(arguments.part_mib * MIB), "-a", "5", master, folder / "pieces" / "p"], check=True)
        make_certificate(folder)
        gigabytes = arguments.mib * MIB / 1e9
        print(f"{arguments.mib} MiB in parts of {arguments.part_mib} MiB, {arguments.rounds} rounds, medians")
        for title, certificate in (("plain HTTP", False), ("TLS", True)):
            print_table(title, Contest(arguments, folder, certificate).run(), gigabytes)
        shutil.rmtree(folder / "pieces")
        master.unlink()
        return memory_run(arguments, folder)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


sys.exit(0 if main() else 1)
