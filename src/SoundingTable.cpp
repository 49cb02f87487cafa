// How the table of soundings is written.
#include "SoundingTable.h"

#include "Csv.h"
#include "FeedTable.h"
#include "Table.h"

#include <cmath>
#include <optional>

namespace corvane::table {

namespace {

// Each of these appends a comma and a field.

void appendText(std::string& out, std::string_view text) {
    out += ',';
    appendCsvField(out, text);
}

void appendQuantity(std::string& out, double quantity) {
    out += ',';
    if (!std::isnan(quantity)) {
        appendNumber(out, quantity + 0.0);  // -0 + 0 is 0
    }
}

void appendQuantity(std::string& out, const std::optional<double>& quantity) {
    appendQuantity(out, quantity.value_or(SoundingLevel::NOT_GIVEN));
}

void appendHeight(std::string& out, const SoundingLevel& level) {
    // The code form gives heights in whole metres at best.
    appendQuantity(out, level.heightComputed ? std::round(level.height) : level.height);
    out += std::isnan(level.height) ? "," : level.heightComputed ? ",1" : ",0";
}

}  // namespace

void appendSoundingHeader(std::string& out) {
    out += "form,station,day,hour,slat,slon,selev,launch,parts,kinds,doubt,"
           "pres,height,height_computed,tdry,dp,wspd,wdir\n";
}

void appendSoundingRows(std::string& out, const Sounding& sounding) {
    std::string begin;  // what all rows of a sounding share
    appendCsvField(begin, formName(sounding.form));
    appendText(begin, sounding.station);
    appendQuantity(begin, sounding.day);
    appendQuantity(begin, sounding.hour);
    appendQuantity(begin, sounding.latitude);
    appendQuantity(begin, sounding.longitude);
    appendQuantity(begin, sounding.elevation);
    appendText(begin, sounding.launch);
    appendText(begin, sounding.letters);
    for (const SoundingLevel& level : sounding.levels) {
        out += begin;
        appendText(out, kindNames(level.kinds));
        appendText(out, joinNames(level.doubts));
        appendQuantity(out, level.pressure);
        appendHeight(out, level);
        appendQuantity(out, level.temperature);
        appendQuantity(out, level.dewpoint);
        appendQuantity(out, level.windSpeed);
        appendQuantity(out, level.windDirection);
        out += '\n';
    }
}

}  // namespace corvane::table
