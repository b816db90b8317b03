"""pillow_reduce.py FILE SIDE COLOURS: reduces the square picture in FILE, red, green and blue of each pixel, to a palette by
Pillow's median cut. Prints the processor time in seconds and the mean squared error over all channels."""

import pathlib
import sys
import time

from PIL import Image, ImageChops, ImageStat

side = int(sys.argv[2])
picture = Image.frombytes("RGB", (side, side), pathlib.Path(sys.argv[1]).read_bytes())
start = time.process_time()
reduced = picture.quantize(int(sys.argv[3]), method=Image.Quantize.MEDIANCUT, dither=Image.Dither.NONE)
seconds = time.process_time() - start
squares = ImageStat.Stat(ImageChops.difference(picture, reduced.convert("RGB"))).sum2
print(seconds, sum(squares) / (3 * side * side))
