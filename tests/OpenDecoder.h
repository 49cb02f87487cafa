// Opens the decoder's protected members, so that a test can put groups into the queue and drive one decoder alone.
#ifndef CORVANE_TESTS_OPEN_DECODER_H
#define CORVANE_TESTS_OPEN_DECODER_H

#include <corvane/Corvane.h>

#include <deque>
#include <sstream>
#include <string>

class OpenDecoder : public Corvane {
public:
    OpenDecoder() = default;
    explicit OpenDecoder(const std::string& text) : Corvane(text) {}

    using Corvane::_abrHeader;
    using Corvane::_bsn;
    using Corvane::_callSign;
    using Corvane::_dayOfMonth;
    using Corvane::_latitude;
    using Corvane::_longitude;
    using Corvane::_obsHour;
    using Corvane::_obsTime;
    using Corvane::_windsInKnots;
    using Corvane::a4;
    using Corvane::addLevel;
    using Corvane::allTokens;
    using Corvane::decode62626;
    using Corvane::decodeAbrHdr;
    using Corvane::decodeBSN;
    using Corvane::decodeCallSign;
    using Corvane::decodeDDFFF;
    using Corvane::decodeDLMWND;
    using Corvane::decodeLSTWND;
    using Corvane::decodeMandatory;
    using Corvane::decodeMarsden;
    using Corvane::decodeMaxWind;
    using Corvane::decodeMBLWND;
    using Corvane::decodeMMMM;
    using Corvane::decodeMobileElev;
    using Corvane::decodePartA;
    using Corvane::decodePartB;
    using Corvane::decodePartC;
    using Corvane::decodePartD;
    using Corvane::decodePosition;
    using Corvane::decodeRELSPGSPL;
    using Corvane::decodeRelSpgSplLatLon;
    using Corvane::decodeSection1;
    using Corvane::decodeSection10;
    using Corvane::decodeSection2;
    using Corvane::decodeSection3;
    using Corvane::decodeSection4;
    using Corvane::decodeSection5;
    using Corvane::decodeSection6;
    using Corvane::decodeSection7;
    using Corvane::decodeSection8;
    using Corvane::decodeSection9;
    using Corvane::decodeTrop;
    using Corvane::decodeTTTDD;
    using Corvane::decodeTTTDDandDDFFF;
    using Corvane::decodeWL150;
    using Corvane::decodeYYGGId_YYGGa4;
    using Corvane::streamDouble;
    using Corvane::streamInt;
    using Corvane::fractionalDegrees;
    using Corvane::init;
    using Corvane::lastWindPresA;
    using Corvane::lastWindPresC;
    using Corvane::strtodDouble;
    using Corvane::LevelComparatorByType;
    using Corvane::levelStore;
    using Corvane::mandatoryA;
    using Corvane::mandatoryC;
    using Corvane::mandatoryHeight;
    using Corvane::MandatoryInfo;
    using Corvane::mobileElevation;
    using Corvane::NEED_TOKEN_OF_LENGTH;
    using Corvane::NEED_TOKENS;
    using Corvane::part;
    using Corvane::partIds;
    using Corvane::rara;
    using Corvane::regionalGroups;
    using Corvane::sasa;
    using Corvane::SKIP_TOKENS;
    using Corvane::sr;
    using Corvane::takeTemperature;
    using Corvane::takeWind;
    using Corvane::throwErrorMsg;
    using Corvane::tokenize;
    using Corvane::tokenQueue;
    using Corvane::whereAreWe;
    using Corvane::wmoMessageType;
    using Corvane::wmoTypes;

    // A decoder with its tables built and these groups in the queue.
    static OpenDecoder withGroups(const std::string& groups) {
        OpenDecoder decoder;
        decoder.init();
        decoder.queue(groups);
        return decoder;
    }

    // The same in the middle of a part: 0 to 3 for A to D.
    static OpenDecoder inPart(int part, const std::string& groups) {
        OpenDecoder decoder = withGroups(groups);
        decoder.part = part;
        return decoder;
    }

    // Puts these groups into the queue in place of what it holds, and keeps a copy as the groups of the report.
    void queue(const std::string& groups) {
        tokenQueue.clear();
        std::istringstream words(groups);
        std::string word;
        while (words >> word) {
            tokenQueue.push_back(word);
        }
        allTokens = tokenQueue;
    }

    // What remains in the queue, single blanks between the groups.
    std::string rest() const {
        std::string text;
        for (const std::string& group : tokenQueue) {
            text += (text.empty() ? "" : " ") + group;
        }
        return text;
    }
};

// The text that a call throws as a std::string, or "(nothing thrown)". Any other exception passes on.
template <typename Call>
std::string faultOf(Call call) {
    try {
        call();
    } catch (const std::string& fault) {
        return fault;
    }
    return "(nothing thrown)";
}

#endif
