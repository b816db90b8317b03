# Draws the histogram of bench/ChartsBench.cpp with R's own graphics on its Cairo device, as HistogramPeer.py does.
#
# Usage: Rscript HistogramPeer.R SAMPLE PNG. The device has no picture that is not a file: "draw" takes as long as "png".

arguments <- commandArgs(trailingOnly = TRUE)
lines <- strsplit(readLines(arguments[1]), " ")
figures <- as.numeric(lines[[1]])
counts <- as.numeric(lines[[2]])
edges <- seq(figures[1], figures[2], length.out = length(counts) + 1)
bins <- structure(list(breaks = edges, counts = counts, mids = edges[-1], xname = "x", equidist = TRUE), class = "histogram")

draw <- function() {
  png(arguments[2], width = 800, height = 600, type = "cairo")
  plot(bins, col = "#cccccc", main = "", xlab = "Magnitude", ylab = "Frequency", font.lab = 2)
  x <- seq(figures[1], figures[2], length.out = 700)
  scale <- (figures[2] - figures[1]) * sum(counts) / length(counts)
  lines(x, scale * dnorm(x, figures[3], figures[4]), col = "red")
  invisible(dev.off())
}

processor <- function() sum(proc.time()[c("user.self", "sys.self")])

input <- file("stdin", "r")
while (length(readLines(input, 1)) == 1) {
  start <- processor()
  # The clock counts milliseconds.
  for (i in 1:10) draw()
  cat((processor() - start) / 10, "\n")
  flush(stdout())
}
