// A network file with the one device that an interface file describes.
#pragma once

#include <string>
#include <string_view>

#include "xif_reader.h"

namespace quorvex {

// The bytes of a standard type that the catalogue knows; 0 for any other.
std::size_t CatalogueLength(int standardType);

// The file's text. A type that the catalogue does not know becomes bytes of its length. The name is
// UTF-8; the device is on line and has no file entries and no properties.
std::string NetworkTextOf(const XifDevice& device, std::string_view name, std::string_view neuron);

}  // namespace quorvex
