// Buffered output of the programs that read bulletins, which keeps the first failure.
#ifndef CORVANE_APP_OUTPUT_H
#define CORVANE_APP_OUTPUT_H

#include <string>

/// A descriptor that text is written to.
class Output {
public:
    /// @param descriptor a descriptor that stays open as long as the object lives.
    explicit Output(int out) : descriptor(out) {}

    /// What is to be written: append to it, then call written().
    std::string text;

    /// Writes the text out when there is much of it; at once if somebody waits for it.
    void written(bool atOnce = false);

    /// Writes the text out.
    void flush();

    /// 0, or errno of the first write that failed. Nothing is written after it.
    int error() const { return failure; }

private:
    int descriptor;
    int failure = 0;
};

/// Opens standard streams that are closed in such a way that using them fails, so that no file takes their place.
void keepStandardStreams();

#endif
