// Opens the decoder's protected members, so that a test can put groups into the queue and call one decoder alone.
#ifndef CORVANE_TESTS_OPEN_DECODER_H
#define CORVANE_TESTS_OPEN_DECODER_H

#include "support/Faults.h"

#include <corvane/Corvane.h>

#include <deque>
#include <sstream>
#include <string>
#include <vector>

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
    using Corvane::fractionalDegrees;
    using Corvane::init;
    using Corvane::lastWindPresA;
    using Corvane::lastWindPresC;
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
    using Corvane::streamDouble;
    using Corvane::streamInt;
    using Corvane::strtodDouble;
    using Corvane::takeTemperature;
    using Corvane::takeWind;
    using Corvane::throwErrorMsg;
    using Corvane::tokenize;
    using Corvane::tokenQueue;
    using Corvane::whereAreWe;
    using Corvane::wmoMessageType;
    using Corvane::wmoTypes;

    // A decoder with its reference tables and with these groups in the queue.
    static OpenDecoder withGroups(const std::string& groups) {
        OpenDecoder decoder;
        decoder.init();
        decoder.queue(groups);
        return decoder;
    }

    // The same inside a part: 0 to 3 for A to D.
    static OpenDecoder inPart(int part, const std::string& groups) {
        OpenDecoder decoder = withGroups(groups);
        decoder.part = part;
        return decoder;
    }

    // A decoder without a report that has these levels, filed in this order.
    static OpenDecoder holding(const std::vector<Level>& levels) {
        OpenDecoder decoder;
        for (const Level& level : levels) {
            decoder.addLevel(level);
        }
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

    // What remains in the queue, separated by single spaces.
    std::string rest() const {
        std::string text;
        for (const std::string& group : tokenQueue) {
            text += (text.empty() ? "" : " ") + group;
        }
        return text;
    }
};

#endif
