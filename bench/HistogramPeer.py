"""Draws the histogram of bench/ChartsBench.cpp with Matplotlib's Agg backend.

Usage: HistogramPeer.py SAMPLE PNG. SAMPLE holds the limits, the mean and the standard deviation on its first line and the counts of the
bins on the second. For each line "draw" or "png" of the standard input, it draws the chart on 800 by 600 pixels, for "png" into a
file as well, and tells the seconds of the processor that this took.
"""

import sys
import time

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np


def draw(figures, counts, path):
    low, high, mean, deviation = figures
    figure = plt.figure(figsize=(8, 6), dpi=100)
    axes = figure.add_subplot()
    edges = np.linspace(low, high, len(counts) + 1)
    axes.bar(edges[:-1], counts, np.diff(edges), align="edge", color="#cccccc", edgecolor="black", linewidth=0.72)
    x = np.linspace(low, high, 700)
    scale = (high - low) * sum(counts) / len(counts) / (deviation * np.sqrt(2 * np.pi))
    axes.plot(x, scale * np.exp(-0.5 * ((x - mean) / deviation) ** 2), "red", linewidth=0.72)
    axes.set_xlim(low, high)
    axes.set_xlabel("Magnitude", fontsize=12, fontweight="bold")
    axes.set_ylabel("Frequency", fontsize=12, fontweight="bold")
    if path:
        figure.savefig(path)
    else:
        figure.canvas.draw()
    plt.close(figure)


def main():
    with open(sys.argv[1], encoding="ascii") as sample:
        figures, counts = ([float(word) for word in line.split()] for line in sample)
    for line in sys.stdin:
        start = time.process_time()
        draw(figures, counts, sys.argv[2] if line.strip() == "png" else None)
        print(time.process_time() - start, flush=True)


main()
