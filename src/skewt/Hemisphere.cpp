#include "Hemisphere.h"

#include <algorithm>
#include <array>

namespace corvane::skewt {

namespace {

struct Stations {
    int first;
    int last;
};

// The station numbers south of the equator (WMO-No. 9, Volume A). Blocks that lie across it are cut where their
// numbering crosses it; a few stations within about 100 km of the equator are on the wrong side, where it does not
// matter.
constexpr std::array<Stations, 19> SOUTHERN{{
    {61900, 61930},  // Ascension, Saint Helena
    {61960, 61999},  // islands of the Indian Ocean
    {63700, 63999},  // south of Kenya, Tanzania, Seychelles
    {64100, 64499},  // south of the Democratic Republic of the Congo, Rwanda, Burundi, Congo
    {66000, 66999},  // Angola
    {67000, 67999},  // Madagascar, Mozambique, Zambia, Zimbabwe
    {68000, 68999},  // South Africa, Namibia, Botswana, Marion Island
    {82100, 82999},  // Brazil south of Amapa
    {83000, 83999},  // Brazil
    {84000, 84999},  // Ecuador, Peru
    {85000, 89999},  // Bolivia, Chile, Paraguay, Uruguay, Argentina, Falkland Islands, Antarctica
    {91500, 91599},  // Solomon Islands, Vanuatu, New Caledonia
    {91620, 91999},  // Tuvalu, Fiji, Samoa, Tonga, Cook Islands, Polynesia
    {92000, 95999},  // Papua New Guinea, New Zealand, Australia
    {96160, 96299},  // south of Sumatra
    {96580, 96999},  // south of Borneo, Java, Cocos and Christmas Islands
    {97060, 97399},  // south of Celebes, Lesser Sunda Islands
    {97450, 97999},  // Moluccas and New Guinea
    {80398, 80398},  // Leticia
}};

}  // namespace

bool southernStation(std::string_view station) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    if (station.size() != 5 || !std::all_of(station.begin(), station.end(), isDigit)) {
        return false;
    }
    int number = 0;
    for (const char digit : station) {
        number = 10 * number + (digit - '0');
    }
    return std::any_of(SOUTHERN.begin(), SOUTHERN.end(), [number](const Stations& stations) {
        return number >= stations.first && number <= stations.last;
    });
}

bool southern(const Sounding& sounding) {
    if (sounding.latitude) {
        return *sounding.latitude < 0.0;
    }
    return sounding.form == Corvane::WMO_TEMP && southernStation(sounding.station);
}

}  // namespace corvane::skewt
