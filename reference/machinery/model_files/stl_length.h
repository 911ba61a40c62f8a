// Finds binary STL files that end before their last triangle.
#pragma once

#include <string>

namespace hyxOSG {

/// What is wrong with the length of a binary STL file, in words that follow "it "; "" for a whole file, and for any
/// other file. The scene graph's reader takes what there is of such a file without a word to its caller.
std::string stlLengthFault(std::string const& path);

} // namespace hyxOSG
