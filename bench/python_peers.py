"""Peers that are Python modules. Answers each line "function rows columns" with the seconds of processor time that one
call took, on the same data each time."""

import functools
import sys
import time

import numpy
from scipy.spatial.distance import pdist


@functools.lru_cache(maxsize=None)
def data(rows, columns):
    return numpy.random.default_rng(21).normal(size=(rows, columns))


@functools.lru_cache(maxsize=None)
def room(rows):
    return numpy.empty(rows * (rows - 1) // 2)


def euclidean(rows, columns):
    pdist(data(rows, columns), "euclidean", out=room(rows))


for line in sys.stdin:
    name, rows, columns = line.split()
    call = functools.partial(globals()[name], int(rows), int(columns))
    call()  # what it allocates and reads for the first time is there
    start = time.process_time()
    call()
    print(time.process_time() - start, flush=True)
