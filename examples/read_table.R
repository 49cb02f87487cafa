#!/usr/bin/env Rscript
usage <- "usage: read_table.R TABLE...

Reads the tables that corvane writes into one data frame, with the name of its file in front of each level. Shows how
many levels of each kind there are, and the standard surfaces."

files <- commandArgs(trailingOnly = TRUE)
if (length(files) == 0) {
    writeLines(usage, stderr())
    quit(status = 2)
}
if (files[1] %in% c("-h", "--help")) {
    writeLines(usage)
    quit(status = 0)
}

# An empty field (not reported) and "nan" (solidi in place of a value) both become NA. The time remains text: it is
# hhmmss, or hhmm, without leading zeros. Types are given because a table may have no row to tell them from.
types <- c(type = "character", time = "character",
           sapply(c("pres", "tdry", "dp", "wspd", "wdir", "height", "lat", "lon", "pres2"), function(x) "numeric"))
read <- function(file) {
    table <- read.csv(file, na.strings = c("", "nan"), colClasses = types)
    cbind(file = rep(file, nrow(table)), table)
}
table <- do.call(rbind, lapply(files, read))

for (kind in unique(table$type)) {
    cat(kind, sum(table$type == kind), "\n")
}
standard <- table[table$type == "mandatory", c("file", "pres", "height", "tdry", "dp", "wdir", "wspd")]
print(standard, row.names = FALSE)
