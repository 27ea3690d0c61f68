"""Keeps memory that the system has to hand: `warm_memory.py BYTES` prints a line when done, and ends with its input.

A virtual machine gives free memory back to its host within seconds, in blocks of megabytes, and gets it again page by
page at a tenth of the speed. Whoever fills gigabytes then pays for that, and the first client of a run pays most. Here
memory is touched once and let go again but for one page in every such block: the rest stays the machine's, free for
the client that is measured next. A process of its own, so that its size is not taken for that of a client.
"""
import mmap
import sys

BLOCK = 4 << 20
PAGE = mmap.PAGESIZE

size = -(-int(sys.argv[1]) // BLOCK) * BLOCK
memory = mmap.mmap(-1, size, flags=mmap.MAP_PRIVATE | mmap.MAP_ANONYMOUS | mmap.MAP_POPULATE)
for block in range(0, size, BLOCK):
    memory.madvise(mmap.MADV_DONTNEED, block + PAGE, BLOCK - PAGE)
print("warm", flush=True)
sys.stdin.read()
