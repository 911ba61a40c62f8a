// How a recorded scene looked: colours, view and background, beside what a journal keeps of its bodies.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"

#include <osg/Group>

#include <string>

namespace hyxOSG {

class ExampleApplication;

/// The look of these bodies and of their application's picture as JSON.
std::string describeLook(ExampleApplication& application, hyx::RigidBodyPtrVector const& bodies);

/// Gives the visuals of `bodies`, which are under `root`, the colours of a description. What it lacks, or does not say
/// well, stays.
void applyColors(std::string const& look, hyx::RigidBodyPtrVector const& bodies, osg::Group& root);

/// Gives an application the view and background of a description; the view only `withCamera`.
void applyPicture(std::string const& look, ExampleApplication& application, bool withCamera);

} // namespace hyxOSG
