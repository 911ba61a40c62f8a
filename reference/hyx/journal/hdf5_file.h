// The few parts of HDF5 that journals are made of.
#pragma once

#include <hdf5.h>

#include <string>
#include <utility>
#include <vector>

namespace hyx {

/// Owns an HDF5 identifier. Failures throw std::runtime_error with the text given; HDF5 itself is kept from printing.
class Hdf5Handle {
public:
    Hdf5Handle() = default;
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

private:
    hid_t m_id = H5I_INVALID_HID;
    herr_t (*m_close)(hid_t) = nullptr;
};

Hdf5Handle createHdf5File(std::string const& path);
Hdf5Handle openHdf5File(std::string const& path, bool forWriting);
/// A group whose members keep the order in which they were made.
Hdf5Handle createHdf5Group(hid_t parent, std::string const& name);
Hdf5Handle openHdf5Group(hid_t parent, std::string const& name);
/// The names of the groups in `parent`, in the order in which they were made.
std::vector<std::string> listHdf5Groups(hid_t parent);
bool hasHdf5Link(hid_t parent, std::string const& name);

void writeHdf5Texts(hid_t parent, std::string const& name, std::vector<std::string> const& texts);
std::vector<std::string> readHdf5Texts(hid_t parent, std::string const& name);

/// How numbers are stored.
struct Hdf5Storage {
    bool single = false;     ///< in single precision
    bool compressed = false; ///< deflated
};

/// An array of rows that grows: [rows][items][components] numbers, in chunks.
class Hdf5Rows {
public:
    Hdf5Rows() = default;
    static Hdf5Rows create(hid_t parent, std::string const& name, size_t items, size_t components, Hdf5Storage storage);
    static Hdf5Rows open(hid_t parent, std::string const& name);

    size_t numRows() const { return m_rows; }

    size_t numItems() const { return m_items; }

    size_t numComponents() const { return m_components; }

    /// Appends whole rows; flushing is the file's work.
    void append(std::vector<double> const& numbers);
    /// The numbers of `count` rows.
    std::vector<double> read(size_t row, size_t count = 1) const;

    explicit operator bool() const { return static_cast<bool>(m_data); }

private:
    size_t width() const { return m_items * m_components; }

    Hdf5Handle m_data;
    size_t m_rows = 0;
    size_t m_items = 0;
    size_t m_components = 0;
};

} // namespace hyx
