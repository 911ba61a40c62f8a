// The enumerators of the scene graph.
#pragma once

#include "binding/runtime/integer_constants.h"

#include <osg/NodeVisitor>
#include <osg/Shader>
#include <osg/StateAttribute>
#include <osgGA/GUIEventAdapter>

namespace modules {

inline constexpr runtime::Constant scene_graph_constants[] = {
    {"NodeVisitor_NODE_VISITOR", osg::NodeVisitor::NODE_VISITOR},
    {"NodeVisitor_UPDATE_VISITOR", osg::NodeVisitor::UPDATE_VISITOR},
    {"NodeVisitor_CULL_VISITOR", osg::NodeVisitor::CULL_VISITOR},
    {"NodeVisitor_TRAVERSE_NONE", osg::NodeVisitor::TRAVERSE_NONE},
    {"NodeVisitor_TRAVERSE_ALL_CHILDREN", osg::NodeVisitor::TRAVERSE_ALL_CHILDREN},
    {"NodeVisitor_TRAVERSE_ACTIVE_CHILDREN", osg::NodeVisitor::TRAVERSE_ACTIVE_CHILDREN},
    {"StateAttribute_OFF", osg::StateAttribute::OFF},
    {"StateAttribute_ON", osg::StateAttribute::ON},
    {"StateAttribute_OVERRIDE", osg::StateAttribute::OVERRIDE},
    {"StateAttribute_PROTECTED", osg::StateAttribute::PROTECTED},
    {"StateAttribute_MATERIAL", osg::StateAttribute::MATERIAL},
    {"StateAttribute_POLYGONMODE", osg::StateAttribute::POLYGONMODE},
    {"StateAttribute_CULLFACE", osg::StateAttribute::CULLFACE},
    {"StateAttribute_LINEWIDTH", osg::StateAttribute::LINEWIDTH},
    {"StateAttribute_DEPTH", osg::StateAttribute::DEPTH},
    {"StateAttribute_BLENDFUNC", osg::StateAttribute::BLENDFUNC},
    {"StateAttribute_PROGRAM", osg::StateAttribute::PROGRAM},
    {"Shader_VERTEX", osg::Shader::VERTEX},
    {"Shader_FRAGMENT", osg::Shader::FRAGMENT},
    {"GUIEventAdapter_SCROLL_UP", osgGA::GUIEventAdapter::SCROLL_UP},
    {"GUIEventAdapter_SCROLL_DOWN", osgGA::GUIEventAdapter::SCROLL_DOWN},
    {"GUIEventAdapter_MODKEY_SHIFT", osgGA::GUIEventAdapter::MODKEY_SHIFT},
    {"GUIEventAdapter_MODKEY_CTRL", osgGA::GUIEventAdapter::MODKEY_CTRL},
    {"GUIEventAdapter_MODKEY_ALT", osgGA::GUIEventAdapter::MODKEY_ALT},
};

} // namespace modules
