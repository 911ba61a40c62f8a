// Calls HDF5 and turns its failures into exceptions.
#include "reference/hyx/journal/hdf5_file.h"

#include <algorithm>
#include <stdexcept>

namespace hyx {
namespace {

void keepQuiet() {
    static herr_t const quiet = H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    (void)quiet;
}

/// A handle for a call that was made with `keepQuiet` in front.
Hdf5Handle property(hid_t kind) {
    return Hdf5Handle(H5Pcreate(kind), H5Pclose, "HDF5 has no memory left");
}

/// Texts of one length, filled up with zeros: those of any length lie in a heap whose damage crashes the library.
Hdf5Handle textType(size_t length) {
    Hdf5Handle type(H5Tcopy(H5T_C_S1), H5Tclose, "HDF5 has no memory left");
    H5Tset_size(type, std::max<size_t>(length, 1));
    H5Tset_strpad(type, H5T_STR_NULLPAD);
    H5Tset_cset(type, H5T_CSET_UTF8);
    return type;
}

/// The oldest format whose structures have check sums.
Hdf5Handle fileAccess() {
    Hdf5Handle access = property(H5P_FILE_ACCESS);
    H5Pset_libver_bounds(access, H5F_LIBVER_V18, H5F_LIBVER_V18);
    return access;
}

void require(bool good, std::string const& failure) {
    if (!good)
        throw std::runtime_error(failure);
}

} // namespace

Hdf5Handle::Hdf5Handle(hid_t id, herr_t (*close)(hid_t), std::string const& failure) : m_id(id), m_close(close) {
    require(id >= 0, failure);
}

Hdf5Handle createHdf5File(std::string const& path) {
    keepQuiet();
    Hdf5Handle const creation = property(H5P_FILE_CREATE);
    H5Pset_link_creation_order(creation, H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED);
    return Hdf5Handle(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, creation, fileAccess()), H5Fclose,
                      "the journal '" + path + "' cannot be written: is the folder there, and not write-protected?");
}

Hdf5Handle openHdf5File(std::string const& path, bool forWriting) {
    keepQuiet();
    return Hdf5Handle(H5Fopen(path.c_str(), forWriting ? H5F_ACC_RDWR : H5F_ACC_RDONLY, fileAccess()), H5Fclose,
                      "the journal '" + path + "' cannot be read: it is missing, damaged or no journal");
}

Hdf5Handle createHdf5Group(hid_t parent, std::string const& name) {
    Hdf5Handle const creation = property(H5P_GROUP_CREATE);
    H5Pset_link_creation_order(creation, H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED);
    return Hdf5Handle(H5Gcreate2(parent, name.c_str(), H5P_DEFAULT, creation, H5P_DEFAULT), H5Gclose,
                      "the journal has '" + name + "' already, or cannot be written");
}

Hdf5Handle openHdf5Group(hid_t parent, std::string const& name) {
    return Hdf5Handle(H5Gopen2(parent, name.c_str(), H5P_DEFAULT), H5Gclose, "the journal has no '" + name + "'");
}

std::vector<std::string> listHdf5Groups(hid_t parent) {
    std::vector<std::string> names;
    auto const add = [](hid_t, char const* name, H5L_info_t const*, void* list) -> herr_t {
        static_cast<std::vector<std::string>*>(list)->push_back(name);
        return 0;
    };
    if (H5Literate(parent, H5_INDEX_CRT_ORDER, H5_ITER_INC, nullptr, add, &names) < 0) {
        names.clear(); // files of other programs need not keep the order
        require(H5Literate(parent, H5_INDEX_NAME, H5_ITER_INC, nullptr, add, &names) >= 0, "the journal is damaged");
    }
    return names;
}

bool hasHdf5Link(hid_t parent, std::string const& name) {
    return H5Lexists(parent, name.c_str(), H5P_DEFAULT) > 0;
}

void writeHdf5Texts(hid_t parent, std::string const& name, std::vector<std::string> const& texts) {
    hsize_t const size = texts.size();
    size_t length = 1;
    for (std::string const& text : texts)
        length = std::max(length, text.size());
    std::string padded;
    for (std::string const& text : texts)
        padded.append(text).append(length - text.size(), '\0');
    Hdf5Handle const type = textType(length);
    Hdf5Handle const space(H5Screate_simple(1, &size, nullptr), H5Sclose, "HDF5 has no memory left");
    Hdf5Handle const data(H5Dcreate2(parent, name.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT),
                          H5Dclose, "the journal cannot be written");
    if (!texts.empty())
        require(H5Dwrite(data, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, padded.data()) >= 0,
                "the journal cannot be written");
}

std::vector<std::string> readHdf5Texts(hid_t parent, std::string const& name) {
    Hdf5Handle const data(H5Dopen2(parent, name.c_str(), H5P_DEFAULT), H5Dclose, "the journal has no '" + name + "'");
    Hdf5Handle const space(H5Dget_space(data), H5Sclose, "the journal is damaged");
    Hdf5Handle const stored(H5Dget_type(data), H5Tclose, "the journal is damaged");
    hssize_t const count = H5Sget_simple_extent_npoints(space);
    std::vector<std::string> texts;
    if (count <= 0)
        return texts;
    require(H5Tget_class(stored) == H5T_STRING && H5Tis_variable_str(stored) == 0,
            "the journal's '" + name + "' has no texts of one length");
    size_t const length = H5Tget_size(stored);
    require(length > 0 && size_t(count) <= H5Dget_storage_size(data) / length, "the journal is damaged");
    std::string padded(count * length, '\0');
    require(H5Dread(data, textType(length), H5S_ALL, H5S_ALL, H5P_DEFAULT, padded.data()) >= 0,
            "the journal is damaged");
    for (hssize_t i = 0; i < count; ++i) {
        std::string const text = padded.substr(i * length, length);
        texts.push_back(text.substr(0, text.find('\0')));
    }
    return texts;
}

Hdf5Rows Hdf5Rows::create(hid_t parent, std::string const& name, size_t items, size_t components, Hdf5Storage storage) {
    Hdf5Rows rows;
    rows.m_items = items;
    rows.m_components = components;
    constexpr size_t numbersInChunk = 8192;
    hsize_t const none[] = {0, items, components};
    hsize_t const most[] = {H5S_UNLIMITED, items, components};
    hsize_t const chunk[] = {std::clamp<size_t>(numbersInChunk / std::max<size_t>(items * components, 1), 1, 1024),
                             std::max<size_t>(items, 1), components};
    Hdf5Handle const creation = property(H5P_DATASET_CREATE);
    H5Pset_chunk(creation, 3, chunk);
    H5Pset_fletcher32(creation);
    if (storage.compressed) {
        constexpr unsigned level = 4;
        H5Pset_shuffle(creation);
        require(H5Pset_deflate(creation, level) >= 0, "this HDF5 library cannot compress: choose the journal format 0");
    }
    Hdf5Handle const space(H5Screate_simple(3, none, most), H5Sclose, "HDF5 has no memory left");
    rows.m_data = Hdf5Handle(H5Dcreate2(parent, name.c_str(), storage.single ? H5T_IEEE_F32LE : H5T_IEEE_F64LE, space,
                                        H5P_DEFAULT, creation, H5P_DEFAULT),
                             H5Dclose, "the journal cannot be written");
    return rows;
}

Hdf5Rows Hdf5Rows::open(hid_t parent, std::string const& name) {
    Hdf5Rows rows;
    rows.m_data =
        Hdf5Handle(H5Dopen2(parent, name.c_str(), H5P_DEFAULT), H5Dclose, "the journal has no '" + name + "'");
    Hdf5Handle const space(H5Dget_space(rows.m_data), H5Sclose, "the journal is damaged");
    hsize_t size[3] = {};
    require(H5Sget_simple_extent_ndims(space) == 3 && H5Sget_simple_extent_dims(space, size, nullptr) == 3,
            "the journal's '" + name + "' is damaged");
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
    require(H5Dset_extent(m_data, size) >= 0, "the journal cannot be written");
    Hdf5Handle const file(H5Dget_space(m_data), H5Sclose, "the journal cannot be written");
    Hdf5Handle const memory(H5Screate_simple(3, count, nullptr), H5Sclose, "HDF5 has no memory left");
    H5Sselect_hyperslab(file, H5S_SELECT_SET, start, nullptr, count, nullptr);
    require(H5Dwrite(m_data, H5T_NATIVE_DOUBLE, memory, file, H5P_DEFAULT, numbers.data()) >= 0,
            "the journal cannot be written: is the disk full?");
    m_rows = size[0];
}

std::vector<double> Hdf5Rows::read(size_t row, size_t rows) const {
    std::vector<double> numbers(rows * width());
    if (numbers.empty())
        return numbers;
    hsize_t const start[] = {row, 0, 0};
    hsize_t const count[] = {rows, m_items, m_components};
    Hdf5Handle const file(H5Dget_space(m_data), H5Sclose, "the journal is damaged");
    Hdf5Handle const memory(H5Screate_simple(3, count, nullptr), H5Sclose, "HDF5 has no memory left");
    H5Sselect_hyperslab(file, H5S_SELECT_SET, start, nullptr, count, nullptr);
    require(H5Dread(m_data, H5T_NATIVE_DOUBLE, memory, file, H5P_DEFAULT, numbers.data()) >= 0,
            "the journal is damaged");
    return numbers;
}

} // namespace hyx
