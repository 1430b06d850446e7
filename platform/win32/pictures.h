#pragma once

#include "platform/win32/windows_headers.h"
#include "ports/pictures.h"

namespace cvlog::platform::win32 {

/// Picture files through the system's own decoders, of which COM must be running on the thread; the
/// component's own icons from the icon resources of `module`, whose names are the keys.
class Pictures : public ports::Pictures {
public:
    explicit Pictures(HMODULE module) noexcept : module_(module) {}
    std::shared_ptr<const ports::Picture> load(std::u16string_view path) override;
    std::shared_ptr<const ports::Picture> builtIn(std::u16string_view key) override;

private:
    HMODULE module_;
};

} // namespace cvlog::platform::win32
