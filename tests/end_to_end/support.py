"""The real programs, driven from outside: the local platform with its storage, and the client.

Each test has a folder of its own, which holds the platform's data and the client's homes. Nothing is looked for
elsewhere, and every process that is started is ended by whoever started it.
"""
import base64
import contextlib
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import types
import urllib.request

CLI = os.environ["PALVERA_CLI"]
PLATFORM = os.environ["PALVERA_LOCAL_PLATFORM"]

EMAIL, PASSWORD = "hana@kestrel.example", "open-sesame"
ORG, PROJECT = "org-northlight", "salt"

DONE, FAILED, USAGE, NOT_SIGNED_IN, UNREACHABLE, DISK_FULL, INTERRUPTED = 0, 1, 2, 3, 5, 6, 130

# A command that takes longer has hung. Sanitizers and two busy cores are slow.
PATIENCE = 120


class Workspace:
    """A folder that is gone when the test ends."""

    def __enter__(self):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="palvera-"))
        return self

    def __exit__(self, *unused):
        shutil.rmtree(self.path, ignore_errors=True)

    def make_file(self, name, size, seed=1):
        """A file of bytes that do not repeat."""
        path = self.path / name
        with open(path, "wb") as file:
            for start in range(0, size, 1 << 20):
                file.write(hashlib.shake_128(f"{seed} {start}".encode()).digest(min(size - start, 1 << 20)))
        return path


class Platform:
    """The local platform, as a process. A second start serves on the same ports, from the same data. Whoever uses it as
    a context fails if something improper was sent to it."""

    def __init__(self, workspace, *options, rules=()):
        self.data = workspace.path / "platform"
        self.options = options
        self.violations_file = workspace.path / "violations"
        self.faults_file = workspace.path / "faults.json"
        self.rules_written = 0
        self.break_with(*rules)
        self.ports = ["--port", "0"]
        self.process = None

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, failure, *unused):
        try:
            assert failure or self.violations() == [], self.violations()
        finally:
            self.kill()

    def start(self):
        self.process = subprocess.Popen(
            [PLATFORM, *self.ports, "--data", self.data, "--violations", self.violations_file,
             "--faults", self.faults_file, *self.options],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        self.address = self.process.stdout.readline().strip().removeprefix("PV_API=")
        storage = self.process.stdout.readline().split()[1]
        self.origin = self.address.removesuffix("/api")
        self.ports = ["--port", self.origin.rsplit(":", 1)[1], "--storage-port", storage.rsplit(":", 1)[1]]

    def kill(self):
        if self.process:
            self.process.kill()
            self.process.wait()
            self.process.stdout.close()
            self.process = None

    def break_with(self, *rules):
        """Puts `rules` in the place of those there are; none heals everything."""
        temporary = self.faults_file.with_suffix(".next")
        temporary.write_text(json.dumps({"rules": list(rules)}))
        # The platform looks at the file's time, which two quick writes could share.
        self.rules_written = max(self.rules_written + 1, time.time_ns())
        os.utime(temporary, ns=(self.rules_written, self.rules_written))
        temporary.rename(self.faults_file)

    def ask(self, path, body=None):
        direct = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        with direct.open(self.origin + path, body, timeout=PATIENCE) as answer:
            return answer.read()

    def state(self):
        return json.loads(self.ask("/local/state"))

    def expire(self):
        """Has it forget who is signed in."""
        self.ask("/local/expire", b"")

    def sign_in_on_page(self, account):
        """The address to which its page sends the browser in which somebody signs in."""
        page = self.ask(f"/sign-in/finish?account={account.replace('@', '%40').replace('.', '%2E')}").decode()
        return re.search(r'href="(palvera:[^"]+)"', page)[1]

    def uploads(self, row):
        return [upload for upload in self.state()["uploads"] if upload["deliverable"] == row]

    def stored_parts(self, row):
        return sum(len(upload["parts"]) for upload in self.uploads(row))

    def is_filed(self, row, file):
        return any(upload["filed"] and upload["filename"] == file.name for upload in self.uploads(row))

    def violations(self):
        return self.state()["violations"]


class Result:
    def __init__(self, code, out, error):
        self.code, self.out, self.error = code, out, error
        assert "Sanitizer" not in error and "runtime error:" not in error, error

    def __str__(self):
        return f"exit status {self.code}\n--- output\n{self.out[-3000:]}\n--- errors\n{self.error[-3000:]}"

    def records(self):
        return [json.loads(line) for line in self.out.splitlines()]

    def events(self, kind):
        return [record for record in self.records() if record["event"] == kind]


def homes(home, address):
    """What a program must know in order to keep all that is its own in `home`."""
    home.mkdir(exist_ok=True)
    return {"PV_API": address, "HOME": str(home), "LANGUAGE": "en"} | {
        f"XDG_{kind.upper()}_HOME": str(home / kind) for kind in ("data", "state", "cache", "config")}


def install_handlers(home, programs):
    """Has programs whose home that is open addresses of each scheme with its program."""
    applications, config = home / "data" / "applications", home / "config"
    for folder in applications, config:
        folder.mkdir(parents=True, exist_ok=True)
    for scheme, program in programs.items():
        (applications / f"{scheme}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName={scheme}\nExec={program} %u\n")
    (config / "mimeapps.list").write_text("[Default Applications]\n" + "".join(
        f"x-scheme-handler/{scheme}={scheme}.desktop\n" for scheme in programs))


def plug_in_key(workspace, platform, pin, *emails):
    """A security key of software with a passkey for each account, which the platform knows: the environment of the
    programs that find it. More than one account is to be chosen from."""
    def base64url(data):
        return base64.urlsafe_b64encode(data).decode().rstrip("=")

    passkeys = []
    for email in emails:
        key = subprocess.run(["openssl", "genpkey", "-algorithm", "EC", "-pkeyopt", "ec_paramgen_curve:P-256", "-outform",
                              "DER"], check=True, capture_output=True).stdout
        public = subprocess.run(["openssl", "pkey", "-inform", "DER", "-pubout", "-outform", "DER"], input=key,
                                check=True, capture_output=True).stdout
        passkeys.append({"id": base64url(os.urandom(16)), "relyingParty": "localhost", "user": base64url(email.encode()),
                         "name": email, "discoverable": len(emails) > 1, "key": base64url(key)})
        platform.ask("/sign-in/passkey/add", json.dumps(
            {"email": email, "id": passkeys[-1]["id"], "publicKey": base64url(public),
             "discoverable": len(emails) > 1}).encode())
    file = workspace.path / "security-keys.json"
    file.write_text(json.dumps([{"pin": pin, "passkeys": passkeys}]))
    return {"LD_PRELOAD": str(pathlib.Path(PLATFORM).with_name("libpalvera-soft-key.so")), "PALVERA_SOFT_KEYS": str(file)}


class Client:
    """palvera-cli with homes of its own."""

    def __init__(self, workspace, address, name="home"):
        self.home = workspace.path / name
        # Also where the locale is none that speaks UTF-8.
        kept = {key: value for key, value in os.environ.items() if key not in ("LC_ALL", "LANG")}
        self.environment = kept | homes(self.home, address)

    def start(self, *arguments, **options):
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE} | options
        return subprocess.Popen([CLI, *map(str, arguments)], env=self.environment, **options)

    def finish(self, process, typed=None):
        try:
            out, error = process.communicate(typed, timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            process.kill()
            out, error = process.communicate()
            raise AssertionError(f"hangs\n{out.decode()[-3000:]}\n{error.decode()[-3000:]}")
        return Result(process.returncode, (out or b"").decode(), error.decode())

    def run(self, *arguments, typed=None):
        stdin = subprocess.DEVNULL if typed is None else subprocess.PIPE
        # Without a terminal of its own, so that nothing can be asked there.
        return self.finish(self.start(*arguments, stdin=stdin, start_new_session=True), typed)

    def enter(self, email=EMAIL, password=PASSWORD, *options):
        return self.run("sign-in", "--email", email, "--password-stdin", *options, typed=f"{password}\n".encode())

    def sign_in(self):
        expect(DONE, self.enter())
        return self

    def upload(self, row, file, *options, project=PROJECT):
        return self.run("upload", ORG, project, row, file, *options)

    def journals(self):
        return self.home / "data" / "Palvera" / "Uploads"

    def journal(self, key):
        """The journal of an unfinished upload; None when there is none."""
        try:
            return json.loads((self.journals() / f"{key}.json").read_text())
        except FileNotFoundError:
            return None

    def recorded_parts(self, key):
        return (self.journal(key) or {"done": []})["done"]


@contextlib.contextmanager
def signed_in(*options, rules=()):
    """A folder, a platform and a client with which somebody has signed in there."""
    with Workspace() as workspace, Platform(workspace, *options, rules=rules) as platform:
        yield workspace, platform, Client(workspace, platform.address).sign_in()


def is_sanitized():
    return any(name in pathlib.Path(CLI).read_bytes() for name in (b"__asan_init", b"__tsan_init"))


def digest(path):
    with open(path, "rb") as file:
        return hashlib.file_digest(file, "sha256").hexdigest()


def expect(code, result):
    assert result.code == code, f"expected exit status {code}, not this: {result}"
    return result


def expect_filed(platform, client, row, file):
    """The file is filed on the row, storage has exactly its bytes, and nothing improper was sent on the way."""
    filed = [upload for upload in platform.uploads(row) if upload["filed"]]
    assert len(filed) == 1, f"{len(filed)} uploads are filed"
    assert filed[0]["filename"] == file.name, filed[0]["filename"]
    assert digest(filed[0]["path"]) == digest(file), "storage has other bytes than the file"
    assert not client.journal(row), "the journal is still there"
    assert platform.violations() == [], platform.violations()
    return filed[0]


def wait_until(holds, what):
    """What `holds` gives in the end."""
    deadline = time.monotonic() + PATIENCE
    while not (held := holds()):
        assert time.monotonic() < deadline, f"never: {what}"
        time.sleep(0.03)
    return held


def run_tests(tests):
    """Runs `tests`, functions by their names, says how each went and ends the program."""
    failed = 0
    for name, test in tests.items():
        began = time.monotonic()
        try:
            test()
            print(f"ok      {name} ({time.monotonic() - began:.1f} s)", flush=True)
        except AssertionError as failure:
            failed += 1
            print(f"FAILED  {name}: {failure}", flush=True)
    sys.exit(1 if failed or not tests else 0)


def main():
    """Runs the tests of the script, its functions without parameters: those that the program's arguments name, or all."""
    functions = [each for each in vars(sys.modules["__main__"]).values() if isinstance(each, types.FunctionType)]
    run_tests({test.__name__: test for test in functions
               if test.__module__ == "__main__" and not test.__code__.co_argcount
               and (not sys.argv[1:] or test.__name__ in sys.argv[1:])})
