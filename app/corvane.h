// The program corvane, without its main: the tests call it in their own process.
#ifndef CORVANE_APP_CORVANE_H
#define CORVANE_APP_CORVANE_H

#include <corvane/Corvane.h>

// What main does: decodes the report that the arguments name and returns the exit status.
int corvaneProgram(int argc, char** argv);

// Writes the table of the levels to standard output: a header, then one row per level, flushed row by row.
void csv(const Corvane& decoder);

#endif
