// Loading of a BLAS by its path, its names kept apart from those of others.
#include "benchmarks/blas1/BlasPeer.h"

#include <dlfcn.h>

namespace {

template <class Routine>
bool Find(void* library, const char* name, Routine& routine) {
    routine = reinterpret_cast<Routine>(dlsym(library, name));
    return routine != nullptr;
}

}  // namespace

std::unique_ptr<BlasPeer> BlasPeer::Load(const std::string& name, const std::string& path) {
    void* library = path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return nullptr;
    std::unique_ptr<BlasPeer> peer(new BlasPeer(name, library));
    return peer->FindRoutines() ? std::move(peer) : nullptr;
}

BlasPeer::~BlasPeer() {
    dlclose(fLibrary);
}

bool BlasPeer::FindRoutines() {
    return Find(fLibrary, "dswap_", fRoutines.swap) && Find(fLibrary, "dscal_", fRoutines.scal) &&
           Find(fLibrary, "dcopy_", fRoutines.copy) && Find(fLibrary, "daxpy_", fRoutines.axpy) &&
           Find(fLibrary, "drot_", fRoutines.rot) && Find(fLibrary, "ddot_", fRoutines.dot) &&
           Find(fLibrary, "dnrm2_", fRoutines.nrm2) && Find(fLibrary, "dasum_", fRoutines.asum) &&
           Find(fLibrary, "idamax_", fRoutines.amax);
}
