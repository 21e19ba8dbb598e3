"""Prints the processor time in seconds that a library of Python takes.

    peers.py linkage METHOD TABLE COLUMNS     fastcluster's joins; the distances, SciPy's, are not in the time
    peers.py pdist METRIC TABLE COLUMNS       SciPy's distances: between columns if METRIC is correlation

TABLE is a file of doubles, row by row. Ward, centroid and median linkage get squared distances, as they expect here.
"""

import sys
import time

import numpy
from scipy.spatial.distance import pdist


def read_table(path, columns):
    return numpy.fromfile(path).reshape(-1, int(columns))


def linkage(method, path, columns):
    import fastcluster

    metric = "sqeuclidean" if method in ("ward", "centroid", "median") else "euclidean"
    distances = pdist(read_table(path, columns), metric)
    return lambda: fastcluster.linkage(distances, method=method, preserve_input=False)


def distances(metric, path, columns):
    table = read_table(path, columns)
    if metric == "correlation":
        table = numpy.ascontiguousarray(table.T)
    room = pdist(table, metric)  # what it allocates and reads for the first time is there
    return lambda: pdist(table, metric, out=room)


work = {"linkage": linkage, "pdist": distances}[sys.argv[1]](*sys.argv[2:])
start = time.process_time()
work()
print(time.process_time() - start)
