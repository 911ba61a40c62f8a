// HDF5 files, their groups and links, with failures as exceptions.
#pragma once

#include <hdf5.h>

#include <string>
#include <utility>
#include <vector>

namespace hyx {

inline constexpr char const* unwritten = "the journal cannot be written";

/// Throws std::system_error with the system's reason where HDF5's last failure had one, else std::runtime_error; with
/// the text given.
[[noreturn]] void failHdf5(std::string const& failure);

inline void requireHdf5(bool good, char const* failure) {
    if (!good)
        failHdf5(failure);
}

/// Owns an HDF5 identifier; HDF5 itself is kept from printing.
class Hdf5Handle {
public:
    Hdf5Handle() = default;
    /// Fails with the text given for an identifier that is none.
    Hdf5Handle(hid_t id, herr_t (*close)(hid_t), std::string const& failure);

    Hdf5Handle(Hdf5Handle&& other) noexcept
        : m_id(std::exchange(other.m_id, H5I_INVALID_HID)), m_close(other.m_close) {}

    Hdf5Handle& operator=(Hdf5Handle other) noexcept {
        std::swap(m_id, other.m_id);
        std::swap(m_close, other.m_close);
        return *this;
    }

    ~Hdf5Handle() {
        if (m_id >= 0)
            m_close(m_id);
    }

    operator hid_t() const { return m_id; }

    explicit operator bool() const { return m_id >= 0; }

    /// Closes it now. Fails as a whole when what it holds could not be written.
    void close(char const* failure);

private:
    hid_t m_id = H5I_INVALID_HID;
    herr_t (*m_close)(hid_t) = nullptr;
};

Hdf5Handle createHdf5File(std::string const& path);
Hdf5Handle openHdf5File(std::string const& path, bool forWriting);
/// Lets HDF5 write what it still holds nowhere, so that it can close a file that the disk refuses.
void discardHdf5File(hid_t file) noexcept;

/// A group whose members keep the order in which they were made.
Hdf5Handle createHdf5Group(hid_t parent, std::string const& name);
/// Neither this nor `openHdf5Data` follows links to other places or other files.
Hdf5Handle openHdf5Group(hid_t parent, std::string const& name);
Hdf5Handle openHdf5Data(hid_t parent, std::string const& name);
/// The names of the groups in `parent`, in the order in which they were made.
std::vector<std::string> listHdf5Groups(hid_t parent);
bool hasHdf5Link(hid_t parent, std::string const& name);

} // namespace hyx
