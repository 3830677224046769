// Loading of a library and look-up of its routines.
#include "benchmarks/linpack/FortranPeer.h"

#include <dlfcn.h>

#include <stdexcept>

std::unique_ptr<FortranPeer> FortranPeer::Load(const std::string& path) {
    void* library = path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return library == nullptr ? nullptr : std::unique_ptr<FortranPeer>(new FortranPeer(library));
}

FortranPeer::~FortranPeer() {
    dlclose(fLibrary);
}

void* FortranPeer::Find(const char* name) const {
    void* routine = dlsym(fLibrary, name);
    if (routine == nullptr) {
        throw std::runtime_error(std::string("no routine ") + name);
    }
    return routine;
}
