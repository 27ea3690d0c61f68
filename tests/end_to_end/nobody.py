"""Scripts that are not to run as root: started by root, they go on as a user who may do nothing."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

NOBODY = 65534
# The display's server needs a folder that everybody may use.
OPEN_TMP = ["unshare", "--mount", "sh", "-c", 'mount -t tmpfs -o mode=1777 tmpfs /tmp && exec "$@"', "sh"]
DROP = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(77)


def can_run(*command):
    return subprocess.run([*map(str, command)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0


def leave_root(*variables):
    """Goes on in another process, with the scripts, and the programs that these variables name, where that user can
    read them."""
    if os.geteuid() != 0:
        return
    here = pathlib.Path(sys.argv[0]).resolve().parent
    for folder in tempfile.gettempdir(), "/var/tmp", "/dev/shm":
        place = pathlib.Path(tempfile.mkdtemp(prefix="palvera-nobody-", dir=folder))
        os.chown(place, NOBODY, NOBODY)
        if can_run(*DROP, "test", "-w", place):
            break
        place.rmdir()
    else:
        skip("no folder for temporary files is open to other users")
    opened = [] if os.stat("/tmp").st_mode & 1 else OPEN_TMP
    if opened and not can_run(*opened, "true"):
        skip("/tmp is closed to other users")
    try:
        shutil.copytree(here, place / "scripts")
        moved = {name: shutil.copy(os.environ[name], place) for name in variables}
        sanitizer = os.environ.get("LSAN_OPTIONS", "")
        if named := re.search("suppressions=([^:]+)", sanitizer):
            moved["LSAN_OPTIONS"] = sanitizer.replace(named[1], shutil.copy(named[1], place))
        homes = {"HOME": str(place), "TMPDIR": str(place), "XDG_RUNTIME_DIR": str(place)}
        command = [*opened, *DROP, sys.executable, "-B", *[f"-W{each}" for each in sys.warnoptions],
                   place / "scripts" / pathlib.Path(sys.argv[0]).name, *sys.argv[1:]]
        sys.exit(subprocess.run(command, env=os.environ | homes | moved, cwd=place).returncode)
    finally:
        shutil.rmtree(place)
