// Texts and rows of numbers in HDF5 files.
#pragma once

#include "reference/hyx/journal/hdf5_file.h"

#include <string>
#include <vector>

namespace hyx {

void writeHdf5Texts(hid_t parent, std::string const& name, std::vector<std::string> const& texts);
/// Texts of one length, filled up in any of HDF5's ways.
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
    /// `expectedRows` is a hint: that many share a chunk, if they are not too many.
    static Hdf5Rows create(hid_t parent, std::string const& name, size_t items, size_t components, Hdf5Storage storage,
                           size_t expectedRows);
    /// Throws std::runtime_error for what has other components, or is no such array.
    static Hdf5Rows open(hid_t parent, std::string const& name, size_t components);

    size_t numRows() const { return m_rows; }

    size_t numItems() const { return m_items; }

    /// Appends whole rows; flushing is the file's work.
    void append(std::vector<double> const& numbers);
    /// The numbers of `count` rows, which are finite. Throws std::runtime_error where they are not, or are damaged.
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
