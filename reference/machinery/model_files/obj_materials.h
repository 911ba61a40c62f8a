// The materials that files of OBJ name.
#pragma once

#include <osg/StateSet>

#include <map>
#include <string>
#include <string_view>

namespace hyxOSG {

/// Reads a library of materials. Pictures are looked for in `folder`; what is not understood is passed over.
std::map<std::string, osg::ref_ptr<osg::StateSet>> readObjMaterials(std::string_view content,
                                                                    std::string const& folder);

} // namespace hyxOSG
