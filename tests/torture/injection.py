"""What the client calls the system for, counted and made to fail, by a library that is preloaded into it."""
import contextlib
import os
import struct

LIBRARY = os.environ["PALVERA_FAILING_CALLS"]

# In the library's order, each with the ways in which the kernel lets it fail.
CLASSES = {
    "open": ["EMFILE", "EIO", "EACCES"], "read": ["EIO", "EINTR", "short"], "write": ["ENOSPC", "EIO", "short"],
    "sync": ["EIO"], "rename": ["ENOSPC", "EIO"], "truncate": ["ENOSPC", "EINTR"], "unlink": ["EACCES"],
    "mkdir": ["ENOSPC"], "stat": ["EIO"], "lock": ["ENOLCK"], "socket": ["EMFILE"],
    "connect": ["ECONNREFUSED", "ENETUNREACH"], "send": ["ECONNRESET", "EPIPE", "short"],
    "receive": ["ECONNRESET", "short"], "poll": ["EINTR", "ENOMEM"], "events": ["EMFILE"], "thread": ["EAGAIN"],
    "map": ["ENOMEM"]}


def chosen(count, most):
    """Of `count` calls, `most` by their numbers, spread evenly; all of them where `most` is 0."""
    if most == 0 or count <= most:
        return range(1, count + 1)
    return [1 + (2 * step + 1) * count // (2 * most) for step in range(most)]


@contextlib.contextmanager
def injected(client, counts, fault="", disk=""):
    """The client's programs meet `fault` meanwhile. `counts` then says how many calls of each class there were."""
    counts.write_bytes(bytes(8 * len(CLASSES)))
    kept = client.environment
    client.environment = kept | {"LD_PRELOAD": LIBRARY, "PALVERA_FAULT_COUNTS": str(counts)}
    client.environment |= {"PALVERA_FAULT": fault} if fault else {}
    client.environment |= {"PALVERA_FAULT_DISK": str(disk)} if disk else {}
    try:
        yield
    finally:
        client.environment = kept


def read_counts(counts):
    return dict(zip(CLASSES, struct.unpack(f"{len(CLASSES)}Q", counts.read_bytes())))
