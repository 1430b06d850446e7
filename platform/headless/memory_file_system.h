#pragma once

#include "base/text.h"
#include "platform/headless/call_gate.h"
#include "platform/headless/disk_file_system.h"
#include "ports/file_reader.h"
#include "ports/file_system.h"

#include <map>
#include <memory>
#include <optional>
#include <set>

namespace cvlog::platform::headless {

/// Files and folders that exist in memory only, unless it goes on to the disk. Paths in memory ignore case.
class MemoryFileSystem : public ports::FileSystem, public ports::FileReader {
public:
    explicit MemoryFileSystem(const CallGate& gate) : gate_(gate) {}

    void addFile(std::u16string_view path, std::string_view content = {});
    void addFolder(std::u16string_view path);
    void remove(std::u16string_view path);
    /// What another program does to a file that may be open.
    void append(std::u16string_view path, std::string_view content);
    void truncate(std::u16string_view path, std::size_t size);
    /// Another program keeps the file to itself: nobody else can open it.
    void lock(std::u16string_view path) { locked_.insert(base::folded(path)); }
    /// What has no file here is looked for among this machine's real files from now on. Those are not counted.
    void goOnToDisk() { disk_.emplace(); }
    int openFiles() const noexcept { return *openFiles_; }

    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;
    std::unique_ptr<ports::OpenFile> open(std::u16string_view path) override;

private:
    class Reader;

    const CallGate& gate_;
    std::map<std::u16string, std::shared_ptr<std::string>> files_; // a reader keeps the one it opened
    std::set<std::u16string> folders_;
    std::set<std::u16string> locked_;
    std::optional<DiskFileSystem> disk_;
    std::shared_ptr<int> openFiles_ = std::make_shared<int>(0);
};

} // namespace cvlog::platform::headless
