#include "workbench/command_line.h"

#include "workbench/text.h"

namespace workbench {

CommandLine readCommandLine(int count, wchar_t** words) {
    constexpr struct {
        const wchar_t* option;
        CommandLine::Mode mode;
    } kModes[] = {{L"/auto", CommandLine::kAuto},
                  {L"/pictures", CommandLine::kPictures},
                  {L"/tour", CommandLine::kTour},
                  {L"/glance", CommandLine::kGlance},
                  {L"/check", CommandLine::kCheck}};
    CommandLine line;
    int next = 1;
    for (const auto& candidate : kModes) {
        if (count >= 3 && sameName(words[1], candidate.option)) {
            line.mode = candidate.mode;
            line.file = words[2];
            next = 3;
        }
    }
    line.valid = next == count - 1;
    if (line.valid) {
        line.project = words[next];
    }
    return line;
}

} // namespace workbench
