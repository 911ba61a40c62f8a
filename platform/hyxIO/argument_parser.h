// Reading the command line of an application.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/vector.h"

#include <memory>

namespace hyxIO {

/// The options of a program's command line. It starts with those that an application knows; a program adds its own
/// before `parse`. Those are about the window, the time step and pace, scenes, capture, journals and remote control;
/// `getHelp` lists them. Every getter throws std::invalid_argument for an option that was never declared.
class ArgumentParser : public hyx::Object {
public:
    ArgumentParser();
    /// Declares the known options and parses the arguments, the program's name not among them.
    explicit ArgumentParser(hyx::Vector<hyx::String> const& arguments);

    /// Declares an option with a value, such as "--mass"; `preset` is its value when not given.
    void addOption(hyx::String const& name, hyx::String const& description, hyx::String const& preset = hyx::String());
    /// Declares an option without a value.
    void addFlag(hyx::String const& name, hyx::String const& description);

    /// Reads arguments; what is no option is kept as a positional one, in order. Throws std::invalid_argument with a
    /// one-line reason for an unknown option, a missing or malformed value.
    /// "--help" prints the help text to standard output, and `isHelpRequested` says so.
    void parse(hyx::Vector<hyx::String> const& arguments);
    /// Whether --help was among the arguments.
    bool isHelpRequested() const;
    /// All options with what they do, as text.
    hyx::String getHelp() const;

    /// Whether the option was given.
    bool has(hyx::String const& name) const;
    /// The value of an option; the given one where it was not named.
    hyx::String getString(hyx::String const& name) const;
    /// Throw std::invalid_argument when the value is not such a number.
    hyx::Real getReal(hyx::String const& name) const;
    /// The value of an option; the given one where it was not named.
    long getInteger(hyx::String const& name) const;
    /// A resolution written as "640x480" or "640,480".
    void getSize(hyx::String const& name, long& width, long& height) const;
    /// The arguments that belong to no option.
    hyx::Vector<hyx::String> const& getPositional() const;
    /// The arguments as they were given.
    hyx::Vector<hyx::String> const& getArguments() const;

protected:
    ~ArgumentParser() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxIO
