// Long reports, long words, many objects and many threads: bounded memory, no growth, nothing shared.
#include "support/Faults.h"

#include <corvane/Corvane.h>

#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <thread>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define CORVANE_TESTS_WITH_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_TESTS_WITH_ADDRESS_SANITIZER
#endif
#endif

// Counts the blocks of memory that are in use. AddressSanitizer looks for leaks by itself.
#if !defined(CORVANE_TESTS_WITH_ADDRESS_SANITIZER)
namespace {
std::atomic<long> blocksInUse{0};
}

void* operator new(std::size_t size) {
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++blocksInUse;
    return block;
}

void operator delete(void* block) noexcept {
    blocksInUse -= block != nullptr ? 1 : 0;
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    ::operator delete(block);
}
#endif

namespace {

const std::string DROP =
    "XXAA 70035 99153 70659 04355 99007 29456 28521 00067 28856 28523 88999 77999 31313 09608 80231 "
    "61616 AF302 62626 MBL WND 29023 DLM WND 29525 007410 REL 1532N06587W 023155 =";

std::string faultIn(const std::string& text) {
    return faultOf([&] { const Corvane decoder(text); });
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
    EXPECT_EQ(faultIn(word),
              "WMO type and part identifier (MMMM) must be 4 characters. Error detected at " + word + " ...");
    EXPECT_EQ(faultIn("TTAA 56000 " + word), "Block and station number is incorrect: " + word);
    const Corvane skipped("TTAA 56000 72403 88999 77999 61616 " + word + " 62626 " + word);
    EXPECT_EQ(skipped.tokens().back(), word);
}

#if !defined(CORVANE_TESTS_WITH_ADDRESS_SANITIZER)
TEST(Load, ADecoderGivesAllItsMemoryBack) {
    const auto decodeSomeReports = [] {
        EXPECT_EQ(Corvane(DROP).allLevels().size(), 5U);
        EXPECT_EQ(Corvane(DROP).profile().size(), 2U);
        EXPECT_EQ(faultIn("TTAA 56000 7240"), "Block and station number is incorrect: 7240");
        EXPECT_TRUE(findsGroupTooShort([] { Corvane("TTAA 56000 72403 88999 77999 X"); }));
    };
    decodeSomeReports();  // what is made once for the whole process
    const long before = blocksInUse;
    for (int i = 0; i < 1000; ++i) {
        decodeSomeReports();
    }
    EXPECT_EQ(blocksInUse, before);
}
#endif

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
                // Garbled digits, for the slow number readers.
                count += faultIn("TTAA 56000 72403 99014 1+245 2.015 00/4x 12452") ==
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
