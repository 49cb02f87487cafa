// Captures what is written to a standard stream during the lifetime of an object, even if an exception ends it.
#ifndef CORVANE_TESTS_CAPTURED_OUTPUT_H
#define CORVANE_TESTS_CAPTURED_OUTPUT_H

#include <ios>
#include <iostream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

class CapturedOutput {
public:
    explicit CapturedOutput(std::ostream& stream = std::cout)
        : _stream(stream), _buffer(detached(stream)), _flags(stream.flags()) {
        stream.rdbuf(&_content);
    }
    ~CapturedOutput() {
        _stream.rdbuf(_buffer);
        _stream.flags(_flags);
    }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    std::string text() const { return _content.str(); }

    // What had been written at each flush: "a\n" and then "a\nb\n" for two lines flushed one by one.
    const std::vector<std::string>& flushed() const { return _content.flushed; }

private:
    class Content : public std::stringbuf {
    public:
        Content() : std::stringbuf(std::ios_base::out) {}
        std::vector<std::string> flushed;

    protected:
        int sync() override {
            flushed.push_back(str());
            return 0;
        }
    };

    // The first call of sync_with_stdio(false) gives the standard streams new buffers. The program makes it, and must
    // not do so while one of them is captured.
    static std::streambuf* detached(const std::ostream& stream) {
        std::ios_base::sync_with_stdio(false);
        return stream.rdbuf();
    }

    std::ostream& _stream;
    Content _content;
    std::streambuf* _buffer;
    std::ios_base::fmtflags _flags;
};

// What a call writes to standard output.
template <typename Call>
std::string outputOf(Call call) {
    const CapturedOutput captured;
    call();
    return captured.text();
}

#endif
