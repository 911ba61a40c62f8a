// Rows of CameraData.
#include "platform/hyxOSG/application/camera_data.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared camera_data_rows[] = {
    FUNCTION(new_CameraData, NEW(hyxOSG::CameraData, (osg::Camera const*)),
             NEW(hyxOSG::CameraData, (osgViewer::Viewer const*))),
    FUNCTION(delete_CameraData, DELETE(hyxOSG::CameraData)),
    FUNCTION(CameraData_applyTo, METHOD(hyxOSG::CameraData, applyTo, (osg::Camera*) const),
             METHOD(hyxOSG::CameraData, applyTo, (osgViewer::Viewer*) const)),
    FUNCTION(CameraData_nearClippingPlane_get, GET(hyxOSG::CameraData, nearClippingPlane)),
    FUNCTION(CameraData_nearClippingPlane_set, SET(hyxOSG::CameraData, nearClippingPlane, (double))),
    FUNCTION(CameraData_farClippingPlane_get, GET(hyxOSG::CameraData, farClippingPlane)),
    FUNCTION(CameraData_farClippingPlane_set, SET(hyxOSG::CameraData, farClippingPlane, (double))),
    FUNCTION(CameraData_fieldOfView_get, GET(hyxOSG::CameraData, fieldOfView)),
    FUNCTION(CameraData_fieldOfView_set, SET(hyxOSG::CameraData, fieldOfView, (double))),
    FUNCTION(CameraData_aspectRatio_get, GET(hyxOSG::CameraData, aspectRatio)),
    FUNCTION(CameraData_aspectRatio_set, SET(hyxOSG::CameraData, aspectRatio, (double))),
    FUNCTION(CameraData_valid_get, GET(hyxOSG::CameraData, valid)),
    FUNCTION(CameraData_valid_set, SET(hyxOSG::CameraData, valid, (bool))),
    FUNCTION(CameraData_nearFarRatio_get, GET(hyxOSG::CameraData, nearFarRatio)),
    FUNCTION(CameraData_nearFarRatio_set, SET(hyxOSG::CameraData, nearFarRatio, (double))),
    FUNCTION(CameraData_eye_get, GET(hyxOSG::CameraData, eye)),
    FUNCTION(CameraData_eye_set, SET(hyxOSG::CameraData, eye, (hyx::Vec3 const&))),
    FUNCTION(CameraData_center_get, GET(hyxOSG::CameraData, center)),
    FUNCTION(CameraData_center_set, SET(hyxOSG::CameraData, center, (hyx::Vec3 const&))),
    FUNCTION(CameraData_up_get, GET(hyxOSG::CameraData, up)),
    FUNCTION(CameraData_up_set, SET(hyxOSG::CameraData, up, (hyx::Vec3 const&))),
    REGISTER(hyxOSG::CameraData, CameraData),
    INIT(CameraData),
};

} // namespace

ROWS(camera_data_rows);
