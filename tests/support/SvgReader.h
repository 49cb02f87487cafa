// Reads the SVG of the diagrams for tests: the elements with the groups around them, and the points of their shapes.
// Anything that is not well-formed XML of the kind that the diagrams use makes it throw std::runtime_error.
#ifndef CORVANE_TESTS_SVG_READER_H
#define CORVANE_TESTS_SVG_READER_H

#include <map>
#include <string>
#include <utility>
#include <vector>

// An element of a document.
struct SvgElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text;                 // between its tags, without that of elements in it, entities resolved
    std::vector<std::string> groups;  // ids of the elements around it, outermost first

    std::string attribute(const std::string& name) const;
    double number(const std::string& name) const;
    bool isIn(const std::string& group) const;

    // The lines of a path, and the corners of the box of any other shape; none of what has no shape.
    std::vector<std::vector<std::pair<double, double>>> lines() const;
};

class SvgDocument {
public:
    explicit SvgDocument(const std::string& text);

    const std::vector<SvgElement>& all() const { return elements; }
    std::vector<SvgElement> in(const std::string& group, const std::string& name) const;
    const SvgElement* byId(const std::string& id) const;  // null when there is none

private:
    std::vector<SvgElement> elements;
};

#endif
