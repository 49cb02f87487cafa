// Makes a locale the global one of C++ for as long as the object lives.
#ifndef CORVANE_TESTS_GLOBAL_LOCALE_H
#define CORVANE_TESTS_GLOBAL_LOCALE_H

#include <locale>

class GlobalLocale {
public:
    // The classic locale with this facet in place of its own. The locale owns the facet.
    template <typename Facet>
    explicit GlobalLocale(Facet* facet) : _before(std::locale::global(std::locale(std::locale::classic(), facet))) {}
    ~GlobalLocale() { std::locale::global(_before); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale _before;
};

#endif
