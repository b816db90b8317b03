"""scipy_spline.py FILE CONTROLS: fits a thin-plate spline by SciPy to the control points in FILE and maps the other points there.
The file holds pairs of doubles: the control points, their images, and the points to map. Prints the processor time of the
mapping in seconds."""

import sys
import time

import numpy
from scipy.interpolate import RBFInterpolator

pairs = numpy.fromfile(sys.argv[1]).reshape(-1, 2)
controls = int(sys.argv[2])
spline = RBFInterpolator(pairs[:controls], pairs[controls:2 * controls], kernel="thin_plate_spline")
start = time.process_time()
spline(pairs[2 * controls:])
print(time.process_time() - start)
