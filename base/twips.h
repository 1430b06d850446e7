#pragma once

namespace cvlog::base {

/// A length in twentieths of a point (1/1440 inch). Every length outside the platform code is in twips; pixels exist
/// only inside a platform, converted by the window's real resolution.
using Twips = float;

} // namespace cvlog::base
