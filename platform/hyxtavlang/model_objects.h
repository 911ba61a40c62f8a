// The root of what models in files are made of: objects with a name, properties and parts.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tavlang {

/// A remark on an object of a model: what its reader found in the file and did not carry over.
class Annotation {
public:
    Annotation(std::string remark, std::string path, int number)
        : text(std::move(remark)), file(std::move(path)), line(number) {}

    virtual ~Annotation() = default;

    std::string text;
    std::string file;
    int line; ///< from 1; 0 where the reader knows none
};

namespace Core {

/// What a property of an object is; a vector of 16 numbers is a transform, row by row.
using Value = std::variant<bool, double, std::string, std::vector<double>>;

/// Names and values, in the order in which they are printed.
using Properties = std::vector<std::pair<std::string, Value>>;

/// The base of all that a model consists of. Objects are held by shared pointers; every base of a class of the model
/// starts where the object starts.
class Object {
public:
    virtual ~Object() = default;

    /// The name of the class, its namespaces separated by points.
    virtual std::string getType() const { return "Core.Object"; }

    virtual Properties getProperties() const { return {}; }

    std::string name; ///< as in the file; empty for what has none there
    int line = 0;     ///< where the object begins in its file; 0 where the reader knows none
    std::vector<std::shared_ptr<Object>> children;
    std::vector<std::shared_ptr<Annotation>> annotations;
};

} // namespace Core

namespace Physics {

/// Bodies and what connects them, as one part.
class System : public Core::Object {
public:
    std::string getType() const override { return "Physics.System"; }
};

} // namespace Physics

} // namespace tavlang
