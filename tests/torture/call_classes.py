"""What the preloaded library tells calls to the system apart by."""

# In the library's order, each with the ways in which the kernel lets it fail.
CLASSES = {
    "open": ["EMFILE", "EIO", "EACCES"], "read": ["EIO", "EINTR", "short"], "write": ["ENOSPC", "EIO", "short"],
    "sync": ["EIO"], "rename": ["ENOSPC", "EIO"], "truncate": ["ENOSPC", "EINTR"], "unlink": ["EACCES"],
    "mkdir": ["ENOSPC"], "stat": ["EIO"], "lock": ["ENOLCK"], "socket": ["EMFILE"],
    "connect": ["ECONNREFUSED", "ENETUNREACH"], "send": ["ECONNRESET", "EPIPE", "short"],
    "receive": ["ECONNRESET", "short"], "poll": ["EINTR", "ENOMEM"], "events": ["EMFILE"], "thread": ["EAGAIN"],
    "map": ["ENOMEM"]}
