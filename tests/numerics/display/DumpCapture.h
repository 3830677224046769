// Points the dump stream at a string for the life of the object, and back to standard output at its end.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

#include "numerics/display/display.h"

class DumpCapture {
public:
    DumpCapture() { KwDisplay_930::SetOutStream(fStream); }
    ~DumpCapture() { KwDisplay_930::SetOutStream(std::cout); }
    DumpCapture(const DumpCapture&) = delete;
    DumpCapture& operator=(const DumpCapture&) = delete;

    /// Returns: what was dumped since the last call.
    std::string Take() {
        std::string text = fStream.str();
        fStream.str(std::string());
        return text;
    }

    std::ostream& Stream() { return fStream; }

private:
    std::ostringstream fStream;
};
