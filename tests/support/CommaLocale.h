// Runs a test under a locale that writes 1,5 for one and a half.
#pragma once

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <string>

/// For its lifetime the C library (where a locale with a comma is installed or can be compiled) and the C++ streams use
/// a decimal comma.
class CommaLocale {
public:
    CommaLocale() {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "de-DE", "German_Germany.1252"}) {
            if (Install(name))
                break;
        }
        if (!IsActive())
            Compile();
        fStreams = std::locale::global(std::locale(std::locale(), new Punctuation));
    }
    ~CommaLocale() {
        std::locale::global(fStreams);
        std::setlocale(LC_ALL, "C");
        RemoveCompiled();
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// Returns: whether the C library really uses the comma now.
    static bool IsActive() {
        char text[16];
        std::snprintf(text, sizeof text, "%.1f", 1.5);
        return text[1] == ',';
    }

private:
    struct Punctuation : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    static bool Install(const char* name) { return std::setlocale(LC_ALL, name) != nullptr; }

#ifdef _WIN32
    // Windows brings its locales.
    void Compile() {}
    void RemoveCompiled() {}
#else
    void Compile() {
        char directory[] = "/tmp/brevix-locale-XXXXXX";
        if (!mkdtemp(directory))
            return;
        fDirectory = directory;
        const std::string command = "localedef -i de_DE -f UTF-8 " + fDirectory + "/de_DE.UTF-8 2>/dev/null";
        if (std::system(command.c_str()) == 0) {
            setenv("LOCPATH", directory, 1);
            Install("de_DE.UTF-8");
        }
    }
    void RemoveCompiled() {
        unsetenv("LOCPATH");
        std::filesystem::remove_all(fDirectory);
    }

    std::string fDirectory;
#endif
    std::locale fStreams;
};
