#include "support/Places.h"

std::string programPath() {
    return CORVANE_PROGRAM_PATH;
}

std::string feedPath() {
    return CORVANE_FEED_PATH;
}

std::string skewtPath() {
    return CORVANE_SKEWT_PATH;
}

std::string sourcesPath() {
    return CORVANE_SOURCE_DIR;
}

std::string localesPath() {
    return CORVANE_LOCALES;
}
