#pragma once

#include "ports/fonts.h"

namespace cvlog::com {

/// The system's own font objects, which hosts of all languages know and make.
class OleFonts : public ports::Fonts {
public:
    automation::ObjectRef make(const base::Font& font) override;
    std::unique_ptr<automation::Connection> watch(const automation::ObjectRef& font,
                                                  std::function<void()> changed) override;
};

} // namespace cvlog::com
