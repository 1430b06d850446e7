#pragma once

#include "platform/headless/call_gate.h"
#include "ports/file_system.h"

#include <map>
#include <set>

namespace cvlog::platform::headless {

/// Files and folders that exist in memory only. Paths ignore case.
class MemoryFileSystem : public ports::FileSystem {
public:
    explicit MemoryFileSystem(const CallGate& gate) : gate_(gate) {}

    void addFile(std::u16string_view path, std::string_view content = {});
    void addFolder(std::u16string_view path);
    void remove(std::u16string_view path);

    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;

private:
    const CallGate& gate_;
    std::map<std::u16string, std::string> files_;
    std::set<std::u16string> folders_;
};

} // namespace cvlog::platform::headless
