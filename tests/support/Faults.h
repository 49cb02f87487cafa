// How a call fails: the text of a coding fault, or the group that is too short for what is read from it.
#ifndef CORVANE_TESTS_FAULTS_H
#define CORVANE_TESTS_FAULTS_H

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

inline constexpr const char* NOTHING_THROWN = "(nothing thrown)";

// The text that a call throws as a std::string, or NOTHING_THROWN. Any other exception passes through.
template <typename Call>
std::string faultOf(Call call) {
    try {
        call();
    } catch (const std::string& fault) {
        return fault;
    }
    return NOTHING_THROWN;
}

// Whether the call fails with the standard library's error for a substring that begins after the end of the group.
template <typename Call>
::testing::AssertionResult findsGroupTooShort(Call call) {
    try {
        call();
    } catch (const std::out_of_range& fault) {
        if (std::string(fault.what()).find("basic_string::substr") != std::string::npos) {
            return ::testing::AssertionSuccess();
        }
        return ::testing::AssertionFailure() << "out of range, but not of a substring: " << fault.what();
    } catch (const std::string& fault) {
        return ::testing::AssertionFailure() << "a coding fault instead: " << fault;
    }
    return ::testing::AssertionFailure() << "nothing thrown";
}

#endif
