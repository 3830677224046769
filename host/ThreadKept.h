// One object for each thread, made where it is first asked for and deleted where the thread ends. Internal.
#pragma once

#ifdef _WIN32
#include <memory>

#include "host/ThreadSlot.h"
#endif

namespace KwBrevix_930 {

/// The calling thread's T of its module, for a T that is made without arguments and whose destructor does not throw.
/// Returns: the object; null where the thread has deleted it already, or the system has no room for another one.
/// Note:    not a thread_local object where threads are those of Windows: g++'s runtime deletes such objects only after
///          it has freed their memory.
template <class T>
class ThreadKept {
public:
#ifdef _WIN32
    static T* Get() {
        void* kept = Slot().Get();
        if (kept == &fEnded)
            return nullptr;
        if (!kept) {
            auto made = std::make_unique<T>();
            if (!Slot().Set(made.get()))
                return nullptr;
            kept = made.release();
        }
        return static_cast<T*>(kept);
    }

private:
    static const ThreadSlot& Slot() {
        static const ThreadSlot slot(&End);
        return slot;
    }

    static void End(void* kept) {
        if (kept != &fEnded)
            delete static_cast<T*>(kept);
        Slot().Set(&fEnded);
    }

    // Its address marks the threads that have deleted their object.
    static inline char fEnded = 0;
#else
    static T* Get() {
        static thread_local Holder holder;
        return HasEnded() ? nullptr : &holder.object;
    }

private:
    struct Holder {
        T object;

        ~Holder() { HasEnded() = true; }
    };

    // Has no destructor, so that it can be asked when the object is gone.
    static bool& HasEnded() {
        static constinit thread_local bool hasEnded = false;
        return hasEnded;
    }
#endif
};

}  // namespace KwBrevix_930
