#include "workbench/errors_writer.h"

#include <windows.h>

#include "workbench/failure.h"

namespace workbench {

namespace {

struct SampleLine {
    const char* severity;
    char kind;
    const char* text;
};

constexpr SampleLine kSampleLines[] = {
    {"Error", 'E', "'total' was not declared in this scope"},
    {"Warning", 'W', "unused variable 'count'"},
    {"Warning", 'W', "conversion from 'long' to 'int' may change the value"},
    {"Note", 'I', "the name was declared here"},
};
constexpr long kCodes = 400; // different ones; then they come again
constexpr size_t kBlock = 1 << 16;

std::string toAnsi(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<size_t>(
                          WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
    return bytes;
}

/// The first two cells of a line for each object.
std::vector<std::string> objectCells(const ProjectFolder& project) {
    std::vector<std::string> cells;
    for (const RepositoryEntry& object : project.objects) {
        cells.push_back(toAnsi(L"\"" + project.entityTypes[object.entityType].displayName + L"\" \"" +
                               object.name + L"\""));
    }
    if (cells.empty()) {
        cells.emplace_back("\"\" \"\"");
    }
    return cells;
}

std::string lineOf(const std::string& object, long number) {
    const SampleLine& sample = kSampleLines[static_cast<size_t>(number) % std::size(kSampleLines)];
    return object + " \"" + std::to_string(number + 1) + "\" \"1\" \"" + sample.severity + "\" \"" +
           sample.kind + std::to_string(5001 + number % kCodes) + "\" " + sample.text + "\r\n";
}

/// A file that goes again unless all of it was written.
class NewFile {
public:
    explicit NewFile(const std::wstring& path)
        : path_(path),
          file_(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr)) {
        if (file_ == INVALID_HANDLE_VALUE) {
            throw Failure(path_ + L": the file cannot be written");
        }
    }
    ~NewFile() {
        CloseHandle(file_);
        if (!kept_) {
            DeleteFileW(path_.c_str());
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(const std::string& bytes) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(bytes.size());
        if (!WriteFile(file_, bytes.data(), length, &written, nullptr) || written != length) {
            throw Failure(path_ + L": the file cannot be written");
        }
    }
    void keep() { kept_ = true; }

private:
    std::wstring path_;
    HANDLE file_;
    bool kept_ = false;
};

} // namespace

void writeErrorsFile(const std::wstring& path, const ProjectFolder& project, long lines) {
    const std::vector<std::string> objects = objectCells(project);
    NewFile file(path);
    std::string block;
    for (long number = 0; number < lines; ++number) {
        block += lineOf(objects[static_cast<size_t>(number) % objects.size()], number);
        if (block.size() >= kBlock) {
            file.write(block);
            block.clear();
        }
    }
    file.write(block);
    file.keep();
}

} // namespace workbench
