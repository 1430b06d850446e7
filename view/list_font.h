#pragma once

#include "view/list_face.h"
#include "view/live_font.h"

#include <functional>
#include <memory>
#include <optional>

namespace cvlog::view {

/// A list's font object, and where the font comes from: it is the container's until another one is put, restored or
/// changed. Holds the list weakly; without it nothing happens any more.
class ListFont {
public:
    ListFont(ports::Fonts& fonts, const ListRef& list);
    ListFont(const ListFont&) = delete;
    ListFont& operator=(const ListFont&) = delete;

    /// Called after each put, and each change inside of the font object. The call may end with this object destroyed.
    std::function<void()> changed;

    /// Made when it is first asked for; the same one until another takes its place.
    automation::ObjectRef object();
    /// Nothing and what is no font are refused, and the font stays.
    void put(const automation::ObjectRef& font);
    /// None: the container has none.
    void setAmbient(const std::optional<base::Font>& font);
    /// Takes over a stored font that looks so, or with none goes back to the container's. Nobody is told.
    void restore(const automation::ObjectRef& font, const base::Font& look);
    void restoreDefault();
    /// The font to store; none while it is the container's or equal to it.
    automation::ObjectRef toStore();

private:
    base::Font defaultFont() const { return ambient_.value_or(base::Font()); }
    void show(const base::Font& look);
    void tellChanged() const;

    ports::Fonts& fonts_;
    WeakList list_;
    bool own_ = false; // put, restored or changed: no longer the container's
    std::optional<base::Font> ambient_;
    LiveFont held_;
};

/// Shared by who shows the list and by the objects that stand for it.
using ListFontRef = std::shared_ptr<ListFont>;

} // namespace cvlog::view
