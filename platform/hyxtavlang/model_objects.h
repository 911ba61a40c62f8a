// The objects that models in the modelling language are made of, which modules of the family share among each other.
#pragma once

namespace tavlang {

/// A remark in the text of a model.
class Annotation {
public:
    virtual ~Annotation() = default;
};

namespace Core {

/// The base of all that a model consists of.
class Object {
public:
    virtual ~Object() = default;
};

} // namespace Core

namespace Physics {

/// Bodies and what connects them, as one part.
class System : public Core::Object {};

} // namespace Physics

namespace Robotics::Joints {

/// A hinge with a drive that holds an angle.
class PositionHingeJoint : public Physics::System {};

} // namespace Robotics::Joints

} // namespace tavlang
