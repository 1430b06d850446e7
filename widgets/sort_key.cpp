#include "widgets/sort_key.h"

#include <algorithm>
#include <new>

namespace cvlog::widgets {

SortKeyPtr SortKey::make(int column, std::string_view bytes) {
    void* const room = ::operator new(sizeof(SortKey) + bytes.size());
    auto* const key = new (room) SortKey(column, static_cast<std::uint32_t>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(key + 1));
    return SortKeyPtr(key);
}

void SortKeyPtr::destroy(const SortKey* key) noexcept {
    key->~SortKey();
    ::operator delete(const_cast<SortKey*>(key));
}

} // namespace cvlog::widgets
