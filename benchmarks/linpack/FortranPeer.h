// Routines to compare with, in the calling form of Fortran, from a library that is loaded by its path.
#pragma once

#include <memory>
#include <string>

class FortranPeer {
public:
    /// Returns: null when path is empty or cannot be loaded.
    static std::unique_ptr<FortranPeer> Load(const std::string& path);
    ~FortranPeer();
    FortranPeer(const FortranPeer&) = delete;
    FortranPeer& operator=(const FortranPeer&) = delete;

    /// Calls the routine of that name, "dpofa_"; every argument is passed by its address, arrays as they are.
    /// Fails:   std::runtime_error when the library has none.
    template <class... Arguments>
    void Call(const char* name, Arguments... arguments) const {
        reinterpret_cast<void (*)(Arguments...)>(Find(name))(arguments...);
    }

private:
    explicit FortranPeer(void* library) : fLibrary(library) {}
    void* Find(const char* name) const;

    void* fLibrary;
};
