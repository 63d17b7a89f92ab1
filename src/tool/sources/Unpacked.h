#pragma once

#include <memory>

#include "tool/sources/InputStream.h"
#include "tool/sources/PeekedStream.h"
#include "tool/sources/UnpackedSize.h"

namespace bouncecheck {

/// How many compressions and archives may stand inside each other, as in a gzip file
/// in a tar archive that is compressed itself.
inline constexpr unsigned mostLayers = 6;

/// `stream` without its compression by gzip, bzip2, xz or zstd, if it has any, to be read
/// on from its first byte. `layers` counts what was unpacked already, and is raised;
/// ReadError when there are too many. `size` counts what comes out of every layer, and has
/// to live as long as the result. Of what is damaged, that comes out which was unpacked
/// before.
std::unique_ptr<PeekedStream> unpacked(std::unique_ptr<InputStream> stream, unsigned& layers,
                                       UnpackedSize& size);

/// Counts one layer more. Throws ReadError when there are too many.
void addLayer(unsigned& layers);

}  // namespace bouncecheck
