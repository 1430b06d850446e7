#pragma once

#include "ports/fonts.h"

#include <functional>
#include <memory>

namespace cvlog::view {

/// A font object that is held and listened to: what its holders change in it is seen at once.
class LiveFont {
public:
    /// Called with what the font became. The call may end with this object destroyed.
    using Changed = std::function<void(const base::Font&)>;

    LiveFont(ports::Fonts& fonts, Changed changed);
    ~LiveFont();
    LiveFont(const LiveFont&) = delete;
    LiveFont& operator=(const LiveFont&) = delete;

    /// None until one is held.
    const automation::ObjectRef& object() const noexcept;
    /// Holds another font object and stops listening to the one before. A font that cannot be listened to is held all
    /// the same. None only lets go.
    void hold(automation::ObjectRef font);

private:
    struct Held;

    ports::Fonts& fonts_;
    std::shared_ptr<Held> held_; // shared with a change that is on its way
    std::unique_ptr<automation::Connection> connection_;
};

} // namespace cvlog::view
