#pragma once

#include "ports/object_factory.h"

namespace cvlog::com {

/// Makes objects of the classes that are registered on the system, in this process or as servers of this machine.
class CreatedObjects final : public ports::ObjectFactory {
public:
    automation::ObjectRef create(std::u16string_view className) override;
};

} // namespace cvlog::com
