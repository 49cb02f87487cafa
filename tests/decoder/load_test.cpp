// Long reports, long words, many objects and many threads: bounded memory, no growth, nothing shared.
#include <corvane/Corvane.h>

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_TESTS_WITH_ADDRESS_SANITIZER
#endif
#endif

namespace {

const std::string DROP =
    "XXAA 70035 99153 70659 04355 99007 29456 28521 00067 28856 28523 88999 77999 31313 09608 80231 "
    "61616 AF302 62626 MBL WND 29023 DLM WND 29525 007410 REL 1532N06587W 023155 =";

// The resident memory of this process in bytes.
std::size_t residentMemory() {
    std::ifstream statm("/proc/self/statm");
    std::size_t whole = 0;
    std::size_t resident = 0;
    statm >> whole >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::string faultOf(const std::string& text) {
    try {
        const Corvane decoder(text);
    } catch (const std::string& fault) {
        return fault;
    }
    return "(nothing thrown)";
}

}  // namespace

TEST(Load, AHundredThousandGroupsAreDecoded) {
    std::string text = "TTBB 56008 72403";
    for (int pair = 0; pair < 50000; ++pair) {
        text += " 11850 12456";
    }
    const Corvane decoder(text);
    EXPECT_EQ(decoder.tokens().size(), 100003U);
    const std::vector<Corvane::Level> levels = decoder.allLevels();
    ASSERT_EQ(levels.size(), 50000U);
    EXPECT_EQ(levels.back().fields.at(Corvane::LF_PRES), 850.0);
    EXPECT_EQ(decoder.profile().size(), 1U);
}

TEST(Load, AHundredThousandFurtherPartsAreDecoded) {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "TTDD 5600/ 72403 21212 ";
        text += i % 2 == 0 ? "31313 58708 81102 " : "31313 58708 81102 62626 LAST REPORT ";
    }
    const Corvane decoder(text);
    EXPECT_EQ(decoder.obsTime(), 1102);
    EXPECT_TRUE(decoder.allLevels().empty());
}

TEST(Load, AWordOfTenMegabytesIsAGroupLikeAnyOther) {
    const std::string word(10000000, '/');
    EXPECT_EQ(faultOf(word),
              "WMO type and part identifier (MMMM) must be 4 characters. Error detected at " + word + " ...");
    EXPECT_EQ(faultOf("TTAA 56000 " + word), "Block and station number is incorrect: " + word);
    const Corvane skipped("TTAA 56000 72403 88999 77999 61616 " + word + " 62626 " + word);
    EXPECT_EQ(skipped.tokens().back(), word);
}

TEST(Load, ADecoderLeavesNothingBehind) {
#if defined(__SANITIZE_ADDRESS__) || defined(CORVANE_TESTS_WITH_ADDRESS_SANITIZER)
    GTEST_SKIP() << "the sanitizer keeps freed memory back and looks for leaks by itself";
#endif
    for (int i = 0; i < 1000; ++i) {
        const Corvane decoder(DROP);
        faultOf("XXBB" + DROP.substr(4));
    }
    const std::size_t before = residentMemory();
    for (int i = 0; i < 100000; ++i) {
        const Corvane decoder(DROP.substr(0, 70));
        faultOf("TTAA 56000 7240");
    }
    // A leak of a single group a run would be three megabytes.
    EXPECT_LT(residentMemory(), before + 1000000);
}

TEST(Load, ObjectsInThreadsShareNothing) {
    const std::vector<Corvane::Level> expected = Corvane(DROP).allLevels();
    std::vector<std::thread> threads;
    std::vector<int> differences(8, 0);
    for (int& count : differences) {
        threads.emplace_back([&count, &expected] {
            for (int i = 0; i < 200; ++i) {
                const Corvane decoder(DROP);
                const std::vector<Corvane::Level> levels = decoder.allLevels();
                bool same = levels.size() == expected.size();
                for (std::size_t n = 0; same && n < levels.size(); ++n) {
                    same = levels[n].type == expected[n].type && levels[n].fields == expected[n].fields;
                }
                count += same ? 0 : 1;
                // Garbled figures, so that the slow number readers are at work too.
                count += faultOf("TTAA 56000 72403 99014 1+245 2.015 00/4x 12452") ==
                                 "Dewpoint depression code may not be between 51 to 56. Error detected at 12452 ..."
                             ? 0
                             : 1;
                const Corvane odd("XXAA 70035 99153 70659 04355 88999 77999 62626 LST WND 1E1 SPL 1532N06587W 0X1F");
                count += odd.allLevels().size() == 2 ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const int count : differences) {
        EXPECT_EQ(count, 0);
    }
}
