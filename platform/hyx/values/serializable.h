// What can be written into a stream of the library and read back.
#pragma once

namespace hyxStream {

/// The base of the objects that the library stores in its streams.
class Serializable {
public:
    virtual ~Serializable() = default;
};

} // namespace hyxStream
