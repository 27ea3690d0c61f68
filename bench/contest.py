"""What the benchmarks of transfers share: servers to transfer with, measuring a client, alternating clients, tables."""
import atexit
import http.client
import json
import os
import pathlib
import re
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from dataclasses import astuple, dataclass

MIB = 1 << 20
EMAIL = "hana@kestrel.example"


class Server:
    """A process of ours that serves until it is stopped, or until the script ends in whatever way."""

    def __init__(self, command):
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        atexit.register(self.stop)

    def cpu(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait()


class Calls:
    """What a script asks the platform for itself."""

    def __init__(self, host, port):
        self.host, self.port, self.address, self.cookie = host, port, f"http://{host}:{port}/api", ""

    def call(self, method, path, body=None):
        connection = http.client.HTTPConnection(self.host, self.port)
        headers = {"Accept": "application/json"}
        if body is not None:
            headers["Content-Type"] = "application/json"
        if self.cookie:
            headers["Cookie"] = self.cookie
        connection.request(method, "/api/" + path, None if body is None else json.dumps(body), headers)
        answer = connection.getresponse()
        text = answer.read()
        if answer.status >= 300:
            sys.exit(f"{path}: {answer.status} {text!r}")
        if cookie := answer.getheader("Set-Cookie"):
            self.cookie = cookie.split(";")[0]
        return json.loads(text or "{}")

    def sign_in(self, password):
        self.call("POST", "auth/login", {"email": EMAIL, "password": password})


class Platform(Server, Calls):
    """The local platform, bytes thrown away."""

    def __init__(self, build, *options):
        Server.__init__(self, [build / "palvera-local-platform", "--port", "0", "--discard", *options])
        for line in self.process.stdout:
            if found := re.match(r"PV_API=http://127\.0\.0\.1:(\d+)/api", line):
                Calls.__init__(self, "127.0.0.1", int(found[1]))
            if "password" in line.lower() and "@" in line:
                break


class Elsewhere(Calls):
    """A platform at the other end of a line. What it costs is not to be had."""

    def cpu(self):
        return 0.0

    def stop(self):
        pass


def client_environment(folder, address, certificate=None):
    """What palvera-cli and curl run with: files of their own, the service at `address`, the certificate trusted."""
    places = {f"XDG_{kind}_HOME": str(folder / kind.lower()) for kind in ("DATA", "STATE", "CONFIG", "CACHE")}
    environment = dict(os.environ, PV_API=address, **places)
    if certificate:
        environment["SSL_CERT_FILE"] = environment["CURL_CA_BUNDLE"] = str(certificate)
    return environment


def sign_in(build, environment, password):
    subprocess.run([build / "palvera-cli", "sign-in", "--email", EMAIL, "--password-stdin"], input=password, text=True,
                   env=environment, check=True, stdout=subprocess.DEVNULL)


def make_certificate(folder):
    """cert.pem and key.pem, for this machine's own address."""
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
                    "-addext", "subjectAltName=IP:127.0.0.1,DNS:localhost", "-keyout", folder / "key.pem",
                    "-out", folder / "cert.pem"], check=True, capture_output=True)


def write_noise(path, size):
    """A file that does not compress and that nothing repeats in; the same every time."""
    with open(path, "wb") as out:
        subprocess.run(f"openssl enc -aes-128-ctr -nosalt -K 00 -iv 00 -in /dev/zero 2>/dev/null | head -c {size}",
                       shell=True, stdout=out, check=True)


@dataclass
class Cost:
    """Of one run of a client, or the medians of several."""
    wall: float    # seconds
    cpu: float     # seconds of the client
    storage: float # CPU seconds of what it talked to
    peak: float    # MiB of the client
    others: float  # processors that everything else kept busy meanwhile, the kernel's own threads among it
    stored: float = 0.0 # seconds until its bytes were on the disk too; 0 where nobody asked


def busy():
    """Seconds that the processors have worked so far."""
    user, nice, system, _, _, *interrupts = pathlib.Path("/proc/stat").read_text().split("\n", 1)[0].split()[1:8]
    return sum(map(int, (user, nice, system, *interrupts))) / os.sysconf("SC_CLK_TCK")


def measure(command, environment, server):
    """CPU and memory are the operating system's own accounting of the finished process. The memory of a client that
    needs less than this script shows as this script's."""
    before, busy_before = server.cpu(), busy()
    with tempfile.TemporaryFile() as errors:
        began = time.monotonic()
        process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=errors)
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.monotonic() - began
        process.returncode = os.waitstatus_to_exitcode(status)
        if status != 0:
            errors.seek(0)
            sys.exit(f"{command[0]} failed: {errors.read().decode()[-2000:]}")
    cpu, storage = usage.ru_utime + usage.ru_stime, server.cpu() - before
    others = max(0, busy() - busy_before - cpu - storage) / wall
    return Cost(wall, cpu, storage, usage.ru_maxrss / 1024, others)


def alternate(clients, rounds, run):
    """The median cost of each client by its name, from `rounds` times run(what stands beside the name)."""
    costs = {name: [] for name in clients}
    for _ in range(rounds):
        for name, client in clients.items():
            costs[name].append(run(client))
    return {name: Cost(*(statistics.median(column) for column in zip(*map(astuple, rows))))
            for name, rows in costs.items()}


def print_table(title, costs, gigabytes, limit, tools):
    """`limit` is the client that shows what the machine can do; of `tools`, the best one by wall and the best one by CPU
    are what all are compared with. Where others kept processors busy, the walls are theirs too."""
    stored = any(cost.stored for cost in costs.values())
    print(f"\n{title}\n{'':58}{'x best tool':>15}{'x raw':>15}{'storage':>10}{'others':>8}\n"
          f"{'':20}{'wall s':>9}{'GB/s':>8}{'CPU s/GB':>10}{'peak MiB':>11}{'wall':>8}{'CPU':>7}{'wall':>8}{'CPU':>7}"
          f"{'CPU s/GB':>10}{'CPUs':>8}" + (f"{'stored s':>10}" if stored else ""))
    wall, cpu = (min(getattr(costs[name], key) for name in tools) for key in ("wall", "cpu"))
    raw = costs[limit]
    for name, cost in costs.items():
        print(f"{name:20}{cost.wall:9.2f}{gigabytes / cost.wall:8.2f}{cost.cpu / gigabytes:10.3f}{cost.peak:11.0f}"
              f"{cost.wall / wall:8.2f}{cost.cpu / cpu:7.2f}{cost.wall / raw.wall:8.2f}{cost.cpu / raw.cpu:7.2f}"
              f"{cost.storage / gigabytes:10.3f}{cost.others:8.2f}" + (f"{cost.stored:10.2f}" if stored else ""))
