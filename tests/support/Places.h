// Where the sources are, and where the build has put what the tests run. Only the support knows paths, so that the
// objects of the tests are the same wherever they are built and a compiler cache has them.
#ifndef CORVANE_TESTS_PLACES_H
#define CORVANE_TESTS_PLACES_H

#include <string>

// The path under which the tests call the program corvane, and those of the other programs; empty if they are not
// built.
std::string programPath();
std::string feedPath();
std::string skewtPath();

// The root of the source tree.
std::string sourcesPath();

// The folder in which scripts/test makes a locale.
std::string localesPath();

#endif
