// Writes and reads datasets, and refuses those that lead elsewhere or claim more than they can hold.
#include "reference/hyx/journal/hdf5_data.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyx {
namespace {

constexpr unsigned numberDimensions = 3;
constexpr char const* noMemory = "HDF5 has no memory left";

/// Texts of one length, filled up with zeros: those of any length lie in a heap whose damage crashes the library.
Hdf5Handle textType(size_t length) {
    Hdf5Handle type(H5Tcopy(H5T_C_S1), H5Tclose, noMemory);
    H5Tset_size(type, std::max<size_t>(length, 1));
    H5Tset_strpad(type, H5T_STR_NULLPAD);
    H5Tset_cset(type, H5T_CSET_UTF8);
    return type;
}

[[noreturn]] void refuse(std::string const& name, char const* reason) {
    throw std::runtime_error("the journal's '" + name + "' " + reason);
}

/// Each filter once: deflated over and over, a few bytes unpack to more than any memory.
void requireSimpleFilters(hid_t creation, std::string const& name) {
    int const count = H5Pget_nfilters(creation);
    std::vector<H5Z_filter_t> seen;
    for (int i = 0; i < count; ++i) {
        unsigned flags = 0;
        size_t parameters = 0;
        H5Z_filter_t const filter =
            H5Pget_filter2(creation, unsigned(i), &flags, &parameters, nullptr, 0, nullptr, nullptr);
        if (filter < 0 || std::count(seen.begin(), seen.end(), filter) || H5Zfilter_avail(filter) <= 0)
            refuse(name, "is packed in a way that is not read");
        seen.push_back(filter);
    }
}

/// The numbers or texts must lie in this file, and be no more than its bytes can hold.
void requirePlain(hid_t data, std::string const& name, size_t itemSize) {
    constexpr double highestRatio = 1100; // that of deflate is 1032
    constexpr double largestChunk = 64e6; // bytes, which are in memory at once
    Hdf5Handle const creation(H5Dget_create_plist(data), H5Pclose, "the journal is damaged");
    if (H5Pget_external_count(creation) != 0)
        refuse(name, "lies in another file, which is not read");
    H5D_layout_t const layout = H5Pget_layout(creation);
    if (layout != H5D_COMPACT && layout != H5D_CONTIGUOUS && layout != H5D_CHUNKED)
        refuse(name, "is put together from other places, which are not read");
    double room = double(H5Dget_storage_size(data));
    if (layout == H5D_CHUNKED) {
        requireSimpleFilters(creation, name);
        hsize_t chunk[H5S_MAX_RANK] = {};
        double size = double(itemSize);
        int const dimensions = H5Pget_chunk(creation, H5S_MAX_RANK, chunk);
        for (int i = 0; i < dimensions; ++i)
            size *= double(chunk[i]);
        if (dimensions < 0 || size > largestChunk)
            refuse(name, "is in pieces that are too large");
        room = room * highestRatio + size;
    }
    Hdf5Handle const space(H5Dget_space(data), H5Sclose, "the journal is damaged");
    hsize_t size[H5S_MAX_RANK] = {};
    int const dimensions = H5Sget_simple_extent_dims(space, size, nullptr);
    double claimed = double(itemSize);
    for (int i = 0; i < dimensions; ++i)
        claimed *= double(size[i]);
    if (dimensions < 0 || claimed > room)
        refuse(name, "is damaged: it claims more than is there");
}

/// A text without what fills it up.
std::string trimmed(std::string text, H5T_str_t padding) {
    text.resize(std::min(text.find('\0'), text.size()));
    if (padding == H5T_STR_SPACEPAD)
        text.resize(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

void writeHdf5Texts(hid_t parent, std::string const& name, std::vector<std::string> const& texts) {
    hsize_t const size = texts.size();
    size_t length = 1;
    for (std::string const& text : texts)
        length = std::max(length, text.size());
    std::string padded;
    for (std::string const& text : texts)
        padded.append(text).append(length - text.size(), '\0');
    Hdf5Handle const type = textType(length);
    Hdf5Handle const space(H5Screate_simple(1, &size, nullptr), H5Sclose, noMemory);
    Hdf5Handle const data(H5Dcreate2(parent, name.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT),
                          H5Dclose, unwritten);
    if (!texts.empty())
        requireHdf5(H5Dwrite(data, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, padded.data()) >= 0, unwritten);
}

std::vector<std::string> readHdf5Texts(hid_t parent, std::string const& name) {
    Hdf5Handle const data = openHdf5Data(parent, name);
    Hdf5Handle const space(H5Dget_space(data), H5Sclose, "the journal is damaged");
    Hdf5Handle const stored(H5Dget_type(data), H5Tclose, "the journal is damaged");
    if (H5Tget_class(stored) != H5T_STRING || H5Tis_variable_str(stored) != 0)
        refuse(name, "has no texts of one length");
    size_t const length = H5Tget_size(stored);
    requirePlain(data, name, length);
    hssize_t const count = H5Sget_simple_extent_npoints(space);
    std::vector<std::string> texts;
    if (count <= 0)
        return texts;
    std::string padded(size_t(count) * length, '\0');
    requireHdf5(H5Dread(data, stored, H5S_ALL, H5S_ALL, H5P_DEFAULT, padded.data()) >= 0, "the journal is damaged");
    for (hssize_t i = 0; i < count; ++i)
        texts.push_back(trimmed(padded.substr(size_t(i) * length, length), H5Tget_strpad(stored)));
    return texts;
}

Hdf5Rows Hdf5Rows::create(hid_t parent, std::string const& name, size_t items, size_t components, Hdf5Storage storage,
                          size_t expectedRows) {
    Hdf5Rows rows;
    rows.m_items = items;
    rows.m_components = components;
    constexpr size_t numbersInChunk = 8192;
    size_t const rowsInChunk = std::min<size_t>(numbersInChunk / std::max<size_t>(items * components, 1), 1024);
    hsize_t const none[] = {0, items, components};
    hsize_t const most[] = {H5S_UNLIMITED, items, components};
    hsize_t const chunk[] = {std::max<size_t>(std::min(rowsInChunk, expectedRows), 1), std::max<size_t>(items, 1),
                             components};
    Hdf5Handle const creation(H5Pcreate(H5P_DATASET_CREATE), H5Pclose, noMemory);
    H5Pset_chunk(creation, numberDimensions, chunk);
    H5Pset_fletcher32(creation);
    if (storage.compressed) {
        constexpr unsigned level = 4;
        H5Pset_shuffle(creation);
        requireHdf5(H5Pset_deflate(creation, level) >= 0,
                    "this HDF5 library cannot compress: choose the journal format 0");
    }
    Hdf5Handle const space(H5Screate_simple(numberDimensions, none, most), H5Sclose, noMemory);
    rows.m_data = Hdf5Handle(H5Dcreate2(parent, name.c_str(), storage.single ? H5T_IEEE_F32LE : H5T_IEEE_F64LE, space,
                                        H5P_DEFAULT, creation, H5P_DEFAULT),
                             H5Dclose, unwritten);
    return rows;
}

Hdf5Rows Hdf5Rows::open(hid_t parent, std::string const& name, size_t components) {
    Hdf5Rows rows;
    rows.m_data = openHdf5Data(parent, name);
    Hdf5Handle const space(H5Dget_space(rows.m_data), H5Sclose, "the journal is damaged");
    Hdf5Handle const stored(H5Dget_type(rows.m_data), H5Tclose, "the journal is damaged");
    H5T_class_t const kind = H5Tget_class(stored);
    if (kind != H5T_FLOAT && kind != H5T_INTEGER)
        refuse(name, "has no numbers");
    hsize_t size[numberDimensions] = {};
    if (H5Sget_simple_extent_ndims(space) != numberDimensions ||
        H5Sget_simple_extent_dims(space, size, nullptr) != numberDimensions || size[2] != components)
        refuse(name, "is damaged: it has not the shape [states][items][components]");
    requirePlain(rows.m_data, name, H5Tget_size(stored));
    rows.m_rows = size[0];
    rows.m_items = size[1];
    rows.m_components = size[2];
    return rows;
}

void Hdf5Rows::append(std::vector<double> const& numbers) {
    if (width() == 0 || numbers.empty())
        return;
    hsize_t const start[] = {m_rows, 0, 0};
    hsize_t const count[] = {numbers.size() / width(), m_items, m_components};
    hsize_t const size[] = {m_rows + count[0], m_items, m_components};
    requireHdf5(H5Dset_extent(m_data, size) >= 0, unwritten);
    Hdf5Handle const file(H5Dget_space(m_data), H5Sclose, unwritten);
    Hdf5Handle const memory(H5Screate_simple(numberDimensions, count, nullptr), H5Sclose, noMemory);
    H5Sselect_hyperslab(file, H5S_SELECT_SET, start, nullptr, count, nullptr);
    requireHdf5(H5Dwrite(m_data, H5T_NATIVE_DOUBLE, memory, file, H5P_DEFAULT, numbers.data()) >= 0, unwritten);
    m_rows = size[0];
}

std::vector<double> Hdf5Rows::read(size_t row, size_t rows) const {
    std::vector<double> numbers(rows * width());
    if (numbers.empty())
        return numbers;
    hsize_t const start[] = {row, 0, 0};
    hsize_t const count[] = {rows, m_items, m_components};
    Hdf5Handle const file(H5Dget_space(m_data), H5Sclose, "the journal is damaged");
    Hdf5Handle const memory(H5Screate_simple(numberDimensions, count, nullptr), H5Sclose, noMemory);
    H5Sselect_hyperslab(file, H5S_SELECT_SET, start, nullptr, count, nullptr);
    requireHdf5(H5Dread(m_data, H5T_NATIVE_DOUBLE, memory, file, H5P_DEFAULT, numbers.data()) >= 0,
                "the journal is damaged");
    if (!std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); }))
        throw std::runtime_error("the journal is damaged: it has numbers that are not finite");
    return numbers;
}

} // namespace hyx
