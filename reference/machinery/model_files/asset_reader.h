// The asset importer, in a library of its own, which is loaded when the first file needs it.
#pragma once

#include <osgDB/ReaderWriter>

#include <string>

namespace hyxOSG {

/// Reads a file that is there, with its extension in lower case. The library offers a pointer to it by name.
using AssetFileReader = osgDB::ReaderWriter::ReadResult(std::string const& path, std::string const& extension);

} // namespace hyxOSG
