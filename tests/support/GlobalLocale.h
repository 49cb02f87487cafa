// Foreign locales, set for the lifetime of an object: as the global locale of C++, and as that of C.
#ifndef CORVANE_TESTS_GLOBAL_LOCALE_H
#define CORVANE_TESTS_GLOBAL_LOCALE_H

#include "support/Places.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <string>

// Digits in groups of one, separated by the digit 1, and a decimal comma: code that reads or writes a number in it,
// even one of two digits, gives itself away.
class ForeignNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '1'; }
    std::string do_grouping() const override { return "\1"; }
};

// Sets the global locale of C++ to the classic locale with this facet in place of its own. The locale owns the facet.
class GlobalLocale {
public:
    template <typename Facet>
    explicit GlobalLocale(Facet* facet) : _before(std::locale::global(std::locale(std::locale::classic(), facet))) {}
    ~GlobalLocale() { std::locale::global(_before); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale _before;
};

// Sets the locale of C to one with a decimal comma. The C library looks for it in the system's places and in those that
// the environment variable LOCPATH names, or else in the build folder, where scripts/test puts one.
class DecimalCommaInC {
public:
    DecimalCommaInC() : _before(std::setlocale(LC_ALL, nullptr)) {
        setenv("LOCPATH", localesPath().c_str(), 0);
        for (const char* const name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "es_ES.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                _found = std::strcmp(std::localeconv()->decimal_point, ",") == 0;
                return;
            }
        }
    }
    ~DecimalCommaInC() { std::setlocale(LC_ALL, _before.c_str()); }
    DecimalCommaInC(const DecimalCommaInC&) = delete;
    DecimalCommaInC& operator=(const DecimalCommaInC&) = delete;

    // Whether there is one.
    bool found() const { return _found; }

private:
    std::string _before;
    bool _found = false;
};

#endif
