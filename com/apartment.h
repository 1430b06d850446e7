#pragma once

#include "com/created_objects.h"
#include "com/module.h"
#include "com/ole_fonts.h"
#include "core/globals.h"
#include "platform/win32/services.h"

#include <windows.h>

#include <memory>
#include <unordered_map>

namespace cvlog::com {

class DispatchShell;

/// What all objects of one thread share. It is made with the thread's first object and goes with the last; a
/// thread-local with a destructor would keep the library loaded, so the thread finds it through a TLS slot.
class Apartment : public std::enable_shared_from_this<Apartment> {
public:
    static bool allocateSlot() noexcept;
    static void freeSlot() noexcept;

    /// The calling thread's apartment, made if need be.
    static std::shared_ptr<Apartment> enter();
    /// The calling thread's apartment; null when it has no objects.
    static Apartment* current() noexcept;

    Apartment();
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

    core::Globals& globals() noexcept { return *globals_; }

    /// The shells that hosts see, by the object inside, so that one object has one identity. Not owned.
    std::unordered_map<const automation::Object*, DispatchShell*> shells;

private:
    ModuleLock lock_; // windows may outlive all objects, and messages under way the last of them
    struct Services : platform::win32::Services {
        OleFonts fonts;
        CreatedObjects objects;
    };

    Services services_;
    std::unique_ptr<store::Engine> engine_;
    std::unique_ptr<core::Globals> globals_;
};

} // namespace cvlog::com
