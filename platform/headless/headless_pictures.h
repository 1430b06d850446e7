#pragma once

#include "platform/headless/call_gate.h"
#include "ports/file_system.h"
#include "ports/pictures.h"

namespace cvlog::platform::headless {

/// Pictures of one plain colour that follows from their name. A file needs only to exist.
class HeadlessPictures : public ports::Pictures {
public:
    HeadlessPictures(const CallGate& gate, ports::FileSystem& files) : gate_(gate), files_(files) {}

    std::shared_ptr<const ports::Picture> load(std::u16string_view path) override;
    std::shared_ptr<const ports::Picture> builtIn(std::u16string_view key) override;

private:
    const CallGate& gate_;
    ports::FileSystem& files_;
};

} // namespace cvlog::platform::headless
