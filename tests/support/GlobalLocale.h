// Foreign locales: as the global one of C++, and as that of C, each for as long as an object lives.
#ifndef CORVANE_TESTS_GLOBAL_LOCALE_H
#define CORVANE_TESTS_GLOBAL_LOCALE_H

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <string>

// Digits in groups of one, separated by the digit 1, and a decimal comma: whoever reads or writes a number in it, even
// of two digits, shows it.
class ForeignNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '1'; }
    std::string do_grouping() const override { return "\1"; }
};

// Makes the classic locale with this facet in place of its own the global one of C++. The locale owns the facet.
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

// Makes a locale with a decimal comma that of C. The C library looks for it in the system's places and in those that
// the environment variable LOCPATH names, or else in the build folder, where scripts/test puts one.
class DecimalCommaInC {
public:
    DecimalCommaInC() : _before(std::setlocale(LC_ALL, nullptr)) {
        setenv("LOCPATH", CORVANE_LOCALES, 0);
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
