// Rows of DeformableMeshUpdater.
#include "platform/hyxOSG/renderers/deformable_mesh_updater.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxCollide/trimesh.h"

namespace {

constexpr Declared deformable_mesh_updater_rows[] = {
    FUNCTION(new_DeformableMeshUpdater, NEW(hyxOSG::DeformableMeshUpdater, (hyxCollide::Trimesh*, osg::Group*))),
    FUNCTION(DeformableMeshUpdater_update, METHOD(hyxOSG::DeformableMeshUpdater, update, (bool), false)),
    FUNCTION(DeformableMeshUpdater_setForceUpdate, METHOD(hyxOSG::DeformableMeshUpdater, setForceUpdate, (bool))),
    FUNCTION(DeformableMeshUpdater_getForceUpdate, METHOD(hyxOSG::DeformableMeshUpdater, getForceUpdate, () const)),
    REGISTER(hyxOSG::DeformableMeshUpdater, DeformableMeshUpdater),
    INIT(DeformableMeshUpdater),
};

} // namespace

ROWS(deformable_mesh_updater_rows);
