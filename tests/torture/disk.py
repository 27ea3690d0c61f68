"""A file system, an ext4 of its own, that can lose its power. Needs the right to mount."""
import fcntl
import os
import struct
import subprocess
import sys

SHUTDOWN, WITHOUT_LOG = 0x8004587D, 2  # EXT4_IOC_SHUTDOWN
CANNOT_RUN = 77


class Disk:
    """It is mounted at `path` while it is entered."""

    def __init__(self, folder, megabytes, made_with, mounted_with):
        self.image, self.path = folder / "disk.image", folder / "disk"
        self.options = ",".join(filter(None, ("loop", mounted_with)))
        self.path.mkdir()
        with open(self.image, "wb") as image:
            image.truncate(megabytes << 20)
        subprocess.run(["mkfs.ext4", "-q", *made_with, self.image], check=True)

    def __enter__(self):
        if subprocess.run(["mount", "-o", self.options, self.image, self.path], capture_output=True).returncode:
            print("not run: this user may not mount a file system", flush=True)
            sys.exit(CANNOT_RUN)
        return self

    def __exit__(self, *unused):
        subprocess.run(["umount", self.path], check=True)

    def cut(self):
        """It takes nothing any more, and has lost what was not synced."""
        folder = os.open(self.path, os.O_RDONLY)
        fcntl.ioctl(folder, SHUTDOWN, struct.pack("I", WITHOUT_LOG))
        os.close(folder)

    def come_back(self):
        self.__exit__()
        # What a start does, too; without a journal it has much to mend.
        checked = subprocess.run(["e2fsck", "-f", "-y", self.image], capture_output=True)
        assert checked.returncode < 4, checked
        self.__enter__()
