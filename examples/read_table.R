#!/usr/bin/env Rscript
# Reads a table into R: counts the levels of each kind and shows the standard surfaces.
#
#     corvane REPORT > TABLE
#     Rscript read_table.R TABLE

# An empty field (not reported) and "nan" (solidi where a value should be) both become NA. The time is kept as text: it
# is hhmmss, or hhmm, without leading zeros.
table <- read.csv(commandArgs(trailingOnly = TRUE)[1], na.strings = c("", "nan"), colClasses = c(time = "character"))

for (kind in unique(table$type)) {
    cat(kind, sum(table$type == kind), "\n")
}
standard <- table[table$type == "mandatory", c("pres", "height", "tdry", "dp", "wdir", "wspd")]
print(standard, row.names = FALSE)
