#include "com/apartment.h"

#include "store/engine_selection.h"

namespace cvlog::com {

namespace {

DWORD slot = TLS_OUT_OF_INDEXES;

// A weak pointer on the heap: the slot itself can only hold a plain one.
std::weak_ptr<Apartment>* slotContent() noexcept {
    return static_cast<std::weak_ptr<Apartment>*>(TlsGetValue(slot));
}

} // namespace

bool Apartment::allocateSlot() noexcept {
    slot = TlsAlloc();
    return slot != TLS_OUT_OF_INDEXES;
}

void Apartment::freeSlot() noexcept { TlsFree(slot); }

std::shared_ptr<Apartment> Apartment::enter() {
    if (const auto* content = slotContent())
        if (auto apartment = content->lock()) return apartment;
    auto apartment = std::make_shared<Apartment>();
    auto content = std::make_unique<std::weak_ptr<Apartment>>(apartment);
    TlsSetValue(slot, content.release());
    return apartment;
}

Apartment* Apartment::current() noexcept {
    const auto* content = slotContent();
    return content ? content->lock().get() : nullptr;
}

Apartment::Apartment() : engine_(store::makeLogEngine(services_.files, services_.objects)) {
    services_.host.owner = [this] { return weak_from_this().lock(); };
    services_.host.codeLock = [] { return std::make_shared<ModuleLock>(); };
    globals_ = std::make_unique<core::Globals>(core::Platform::of(services_, *engine_));
    globals_->holder = services_.host.owner;
}

Apartment::~Apartment() {
    // The content may already belong to a newer apartment that an object's end has made.
    if (auto* content = slotContent(); content && content->expired()) {
        TlsSetValue(slot, nullptr);
        delete content;
    }
    globals_.reset();
}

} // namespace cvlog::com
