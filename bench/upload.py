#!/usr/bin/env python3
"""Uploads a file in eight lanes with palvera-cli, curl and raw sockets, alternating, and prints what each costs.

All three send the same bytes, from the page cache, to the local platform's storage, which throws them away. CPU and
memory are the operating system's own accounting of each finished process. Absolute times depend on the machine and on
what else it does: compare the columns of one run.
"""
import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

from contest import MIB, Platform, alternate, client_environment, make_certificate, measure, print_table, sign_in, write_noise

ORG, PROJECT = "org-northlight", "salt"


def write_curl_config(path, pieces, addresses):
    lines = ["parallel", "parallel-max = 8", "silent", "fail", 'header = "Expect:"']
    for piece, address in zip(pieces, addresses):
        lines += [f'upload-file = "{piece}"', f'url = "{address}"', "output = /dev/null"]
    path.write_text("\n".join(lines) + "\n")


class Contest:
    def __init__(self, arguments, folder, encrypted=False, platform=None):
        self.arguments, self.folder = arguments, folder
        self.size = arguments.mib * MIB
        self.part = arguments.part_mib * MIB
        certificate, key = folder / "cert.pem", folder / "key.pem"
        self.platform = platform or Platform(arguments.build, "--part-size", str(self.part),
                                             *(["--tls", certificate, key] if encrypted else []))
        self.environment = client_environment(folder, self.platform.address, certificate if encrypted else None)
        self.row = 3
        sign_in(arguments.build, self.environment, arguments.password)
        self.platform.sign_in(arguments.password)

    def next_row(self):
        self.row += 1
        return f"{PROJECT}-row-{4 + self.row % 15}"

    def signed_addresses(self):
        base = f"orgs/{ORG}/projects/{PROJECT}/deliverables/{self.next_row()}/transfer"
        started = self.platform.call("POST", base + "/start", {"filename": "bench.mov", "contentType": "video/quicktime",
                                                               "byteSize": self.size})
        addresses = []
        for first in range(1, started["partCount"] + 1, 16):
            last = min(first + 15, started["partCount"])
            answer = self.platform.call("POST", base + "/parts", {"object": started["object"],
                                                                  "uploadId": started["uploadId"],
                                                                  "from": first, "to": last})
            addresses += [url["url"] for url in sorted(answer["urls"], key=lambda each: each["partNumber"])]
        return addresses

    def palvera(self):
        return [self.arguments.build / "palvera-cli", "--json", "upload", ORG, PROJECT, self.next_row(),
                self.folder / "master.mov"]

    def curl(self):
        config = self.folder / "curl.conf"
        write_curl_config(config, sorted((self.folder / "pieces").iterdir()), self.signed_addresses())
        return ["curl", "-K", config]

    def raw(self):
        addresses = self.folder / "addresses"
        addresses.write_text("\n".join(self.signed_addresses()) + "\n")
        return [self.arguments.build / "raw_sender", self.folder / "master.mov", str(self.part), addresses]

    def run(self):
        clients = {"palvera-cli": self.palvera, "curl --parallel": self.curl, "raw sockets": self.raw}
        costs = alternate(clients, self.arguments.rounds,
                          lambda command: measure(command(), self.environment, self.platform))
        self.platform.stop()
        return costs


def memory_run(arguments, folder):
    """A sparse file of 16 GiB: the peak must not grow with the file."""
    contest = Contest(arguments, folder, False)
    with open(folder / "sparse.mov", "wb") as sparse:
        sparse.truncate(16 << 30)
    cost = measure([arguments.build / "palvera-cli", "--json", "upload", ORG, PROJECT, contest.next_row(),
                    folder / "sparse.mov"], contest.environment, contest.platform)
    contest.platform.stop()
    bound = 8 * arguments.part_mib + 60
    print(f"\n16 GiB sparse file: {cost.wall:.1f} s, {cost.cpu / 17.18:.3f} CPU s/GB, peak {cost.peak:.0f} MiB "
          f"(bound {bound} MiB)")
    return cost.peak <= bound


def write_master(arguments, folder):
    """The file, whole and in the parts that curl sends."""
    master = folder / "master.mov"
    write_noise(master, arguments.mib * MIB)
    (folder / "pieces").mkdir()
    subprocess.run(["split", "-b", str(arguments.part_mib * MIB), "-a", "5", master, folder / "pieces" / "p"], check=True)
    return master


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
        master = write_master(arguments, folder)
        make_certificate(folder)
        gigabytes = arguments.mib * MIB / 1e9
        print(f"{arguments.mib} MiB in parts of {arguments.part_mib} MiB, {arguments.rounds} rounds, medians")
        for title, encrypted in (("plain HTTP", False), ("TLS", True)):
            print_table(title, Contest(arguments, folder, encrypted).run(), gigabytes, limit="raw sockets",
                        tools=["curl --parallel"])
        shutil.rmtree(folder / "pieces")
        master.unlink()
        return memory_run(arguments, folder)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(0 if main() else 1)
