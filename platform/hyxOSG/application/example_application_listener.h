// Observer of the application's frames.
#pragma once

#include "platform/hyx/objects/referenced.h"

namespace hyxOSG {

class ExampleApplication;

/// Is told before and after each frame of an application; derive from it and override what is wanted.
///
/// Both operations do nothing by themselves. They are called on the thread that runs the loop.
class ExampleApplicationListener : public hyx::Referenced {
public:
    ExampleApplicationListener() = default;

    /// Called at the start of each frame, before the simulation steps. `application` is never null.
    virtual void preFrame(hyxOSG::ExampleApplication* application);

    /// Called at the end of each frame, after it was drawn. `application` is never null.
    virtual void postFrame(hyxOSG::ExampleApplication* application);

    /// Called when an application takes hold of this listener, which may be more than once.
    virtual void enterApplication() {}

    /// Called for each `enterApplication` when that hold ends.
    virtual void leaveApplication() {}

protected:
    ~ExampleApplicationListener() override = default;
};

} // namespace hyxOSG
