#include "support/SvgReader.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <set>
#include <stdexcept>

namespace {

[[noreturn]] void fail(const std::string& reason) {
    throw std::runtime_error("not well-formed: " + reason);
}

std::string resolved(const std::string& text) {
    static const std::map<std::string, std::string> ENTITIES{
        {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"#39", "'"}};
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '<') {
            fail("< in a text");
        }
        if (static_cast<unsigned char>(text[i]) < 0x20 && text[i] != '\n' && text[i] != '\t' && text[i] != '\r') {
            fail("a control character");
        }
        if (text[i] != '&') {
            out += text[i];
            continue;
        }
        const std::size_t end = text.find(';', i);
        const auto entity = end == std::string::npos ? ENTITIES.end() : ENTITIES.find(text.substr(i + 1, end - i - 1));
        if (entity == ENTITIES.end()) {
            fail("an & that begins no entity");
        }
        out += entity->second;
        i = end;
    }
    return out;
}

double toNumber(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(number)) {
        fail("the number " + text);
    }
    return number;
}

}  // namespace

std::string SvgElement::attribute(const std::string& attributeName) const {
    const auto found = attributes.find(attributeName);
    return found == attributes.end() ? "" : found->second;
}

double SvgElement::number(const std::string& attributeName) const {
    return toNumber(attribute(attributeName));
}

bool SvgElement::isIn(const std::string& group) const {
    return std::find(groups.begin(), groups.end(), group) != groups.end();
}

std::vector<std::vector<std::pair<double, double>>> SvgElement::lines() const {
    std::vector<std::vector<std::pair<double, double>>> found;
    const auto box = [&](double left, double top, double right, double bottom) {
        found.push_back({{left, top}, {right, bottom}});
    };
    if (name == "circle") {
        const double radius = number("r");
        box(number("cx") - radius, number("cy") - radius, number("cx") + radius, number("cy") + radius);
    } else if (name == "rect") {
        const double x = attributes.count("x") != 0 ? number("x") : 0.0;
        const double y = attributes.count("y") != 0 ? number("y") : 0.0;
        if (number("width") < 0.0 || number("height") < 0.0) {
            fail("a rectangle of negative size");
        }
        box(x, y, x + number("width"), y + number("height"));
    } else if (name == "text") {
        box(number("x"), number("y"), number("x"), number("y"));
    } else if (name == "path") {
        const std::string data = attribute("d");
        const char* at = data.c_str();
        std::pair<double, double> point;
        while (*at != '\0') {
            const char command = *at++;
            if (command == 'z') {
                continue;
            }
            if ((command != 'M' && command != 'l') || (command == 'l' && found.empty())) {
                fail("path data " + data);
            }
            std::pair<double, double> given;
            for (double* number : {&given.first, &given.second}) {
                char* end = nullptr;
                *number = std::strtod(at, &end);
                if (end == at || !std::isfinite(*number)) {
                    fail("path data " + data);
                }
                at = end;
            }
            if (command == 'M') {
                point = given;
                found.emplace_back();
            } else {
                point = {point.first + given.first, point.second + given.second};
            }
            found.back().push_back(point);
        }
        if (found.empty()) {
            fail("a path without data");
        }
    }
    return found;
}

SvgDocument::SvgDocument(const std::string& text) {
    const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    if (text.compare(0, declaration.size(), declaration) != 0) {
        fail("no declaration");
    }
    std::vector<std::size_t> open;  // indices of elements
    std::set<std::string> ids;
    std::size_t at = declaration.size();
    while (at < text.size()) {
        const std::size_t tag = text.find('<', at);
        const std::string between = resolved(text.substr(at, tag - at));
        if (!open.empty()) {
            elements[open.back()].text += between;
        } else if (between.find_first_not_of("\n ") != std::string::npos) {
            fail("text outside the document");
        }
        if (tag == std::string::npos) {
            break;
        }
        const std::size_t end = text.find('>', tag);
        if (end == std::string::npos) {
            fail("a tag without an end");
        }
        at = end + 1;
        std::string content = text.substr(tag + 1, end - tag - 1);
        if (content.front() == '/') {
            if (open.empty() || elements[open.back()].name != content.substr(1)) {
                fail("</" + content.substr(1) + "> closes nothing");
            }
            open.pop_back();
            continue;
        }
        if (open.empty() && !elements.empty()) {
            fail("two documents");
        }
        const bool empty = content.back() == '/';
        if (empty) {
            content.pop_back();
        }
        SvgElement element;
        std::size_t place = std::min(content.find_first_of(" \n"), content.size());
        element.name = content.substr(0, place);
        while (place < content.size()) {
            if (content[place] == ' ' || content[place] == '\n') {
                ++place;
                continue;
            }
            const std::size_t equals = content.find("=\"", place);
            const std::size_t quote = equals == std::string::npos ? equals : content.find('"', equals + 2);
            if (quote == std::string::npos) {
                fail("an attribute of <" + content + ">");
            }
            const std::string attributeName = content.substr(place, equals - place);
            if (!std::all_of(attributeName.begin(), attributeName.end(),
                             [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == ':'; })) {
                fail("the attribute name " + attributeName);
            }
            if (!element.attributes.emplace(attributeName, resolved(content.substr(equals + 2, quote - equals - 2)))
                     .second) {
                fail("the attribute " + attributeName + " twice");
            }
            place = quote + 1;
        }
        for (const std::size_t parent : open) {
            const std::string id = elements[parent].attribute("id");
            if (!id.empty()) {
                element.groups.push_back(id);
            }
        }
        if (element.attributes.count("id") != 0 && !ids.insert(element.attribute("id")).second) {
            fail("the id " + element.attribute("id") + " twice");
        }
        elements.push_back(element);
        if (!empty) {
            open.push_back(elements.size() - 1);
        }
    }
    if (!open.empty() || elements.empty()) {
        fail("elements without an end");
    }
}

std::vector<SvgElement> SvgDocument::in(const std::string& group, const std::string& name) const {
    std::vector<SvgElement> found;
    std::copy_if(elements.begin(), elements.end(), std::back_inserter(found),
                 [&](const SvgElement& element) { return element.name == name && element.isIn(group); });
    return found;
}

const SvgElement* SvgDocument::byId(const std::string& id) const {
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [&](const SvgElement& element) { return element.attribute("id") == id; });
    return found == elements.end() ? nullptr : &*found;
}
