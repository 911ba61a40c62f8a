// Calls HDF5 and turns its failures into exceptions.
#include "reference/hyx/journal/hdf5_file.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace hyx {
namespace {

/// HDF5's own closing at the end of the process crashes over files that could not be written. Filters that are not
/// built in would be loaded as code from a folder.
void prepareLibrary() {
    static bool const prepared = [] {
        H5dont_atexit();
        H5PLset_loading_state(0);
        return H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr) >= 0;
    }();
    (void)prepared;
}

Hdf5Handle property(hid_t kind) {
    return Hdf5Handle(H5Pcreate(kind), H5Pclose, "HDF5 has no memory left");
}

/// The oldest format whose structures have check sums.
Hdf5Handle fileAccess() {
    Hdf5Handle access = property(H5P_FILE_ACCESS);
    H5Pset_libver_bounds(access, H5F_LIBVER_V18, H5F_LIBVER_V18);
    return access;
}

/// The system's reasons stand only in the texts of the failures.
herr_t findReason(unsigned, H5E_error2_t const* failure, void* found) {
    char const* const place = failure->desc ? std::strstr(failure->desc, "errno = ") : nullptr;
    return place && std::sscanf(place, "errno = %d", static_cast<int*>(found)) == 1 ? 1 : 0;
}

std::string quoted(std::string const& name) {
    return "the journal's '" + name + "' ";
}

/// The kind of object that a name stands for in this file itself.
H5O_type_t kindOf(hid_t parent, std::string const& name) {
    H5L_info_t link;
    if (name.empty() || name.find('/') != std::string::npos ||
        H5Lget_info(parent, name.c_str(), &link, H5P_DEFAULT) < 0)
        throw std::runtime_error("the journal has no '" + name + "'");
    if (link.type != H5L_TYPE_HARD)
        throw std::runtime_error(quoted(name) + "is a link to another place, which is not followed");
    H5O_info_t object;
    if (H5Oget_info_by_name2(parent, name.c_str(), &object, H5O_INFO_BASIC, H5P_DEFAULT) < 0)
        throw std::runtime_error(quoted(name) + "is damaged");
    return object.type;
}

} // namespace

void failHdf5(std::string const& failure) {
    int reason = 0;
    H5Ewalk2(H5E_DEFAULT, H5E_WALK_UPWARD, findReason, &reason);
    if (reason > 0)
        throw std::system_error(reason, std::generic_category(), failure);
    throw std::runtime_error(failure);
}

Hdf5Handle::Hdf5Handle(hid_t id, herr_t (*close)(hid_t), std::string const& failure) : m_id(id), m_close(close) {
    if (id < 0)
        failHdf5(failure);
}

void Hdf5Handle::close(char const* failure) {
    if (m_id < 0)
        return;
    requireHdf5(m_close(m_id) >= 0, failure);
    m_id = H5I_INVALID_HID;
}

Hdf5Handle createHdf5File(std::string const& path) {
    prepareLibrary();
    Hdf5Handle const creation = property(H5P_FILE_CREATE);
    H5Pset_link_creation_order(creation, H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED);
    return Hdf5Handle(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, creation, fileAccess()), H5Fclose,
                      "the journal cannot be written");
}

Hdf5Handle openHdf5File(std::string const& path, bool forWriting) {
    prepareLibrary();
    struct stat found;
    if (stat(path.c_str(), &found) != 0)
        throw std::filesystem::filesystem_error("the journal cannot be read", path,
                                                std::error_code(errno, std::generic_category()));
    if (S_ISDIR(found.st_mode))
        throw std::filesystem::filesystem_error("the journal cannot be read", path,
                                                std::make_error_code(std::errc::is_a_directory));
    if (!S_ISREG(found.st_mode)) // a pipe would be waited for
        throw std::runtime_error("the journal '" + path + "' cannot be read: it is no ordinary file");
    return Hdf5Handle(H5Fopen(path.c_str(), forWriting ? H5F_ACC_RDWR : H5F_ACC_RDONLY, fileAccess()), H5Fclose,
                      "the journal '" + path + "' cannot be read: it is damaged or no journal");
}

void discardHdf5File(hid_t file) noexcept {
    void* descriptor = nullptr;
    int const nowhere = memfd_create("discarded", MFD_CLOEXEC);
    if (nowhere >= 0 && H5Fget_vfd_handle(file, H5P_DEFAULT, &descriptor) >= 0 && descriptor)
        dup2(nowhere, *static_cast<int*>(descriptor));
    if (nowhere >= 0)
        close(nowhere);
}

Hdf5Handle createHdf5Group(hid_t parent, std::string const& name) {
    Hdf5Handle const creation = property(H5P_GROUP_CREATE);
    H5Pset_link_creation_order(creation, H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED);
    return Hdf5Handle(H5Gcreate2(parent, name.c_str(), H5P_DEFAULT, creation, H5P_DEFAULT), H5Gclose,
                      "the journal has '" + name + "' already, or cannot be written");
}

Hdf5Handle openHdf5Group(hid_t parent, std::string const& name) {
    if (kindOf(parent, name) != H5O_TYPE_GROUP)
        throw std::runtime_error(quoted(name) + "is no group");
    return Hdf5Handle(H5Gopen2(parent, name.c_str(), H5P_DEFAULT), H5Gclose, quoted(name) + "is damaged");
}

Hdf5Handle openHdf5Data(hid_t parent, std::string const& name) {
    if (kindOf(parent, name) != H5O_TYPE_DATASET)
        throw std::runtime_error(quoted(name) + "holds no numbers or texts");
    return Hdf5Handle(H5Dopen2(parent, name.c_str(), H5P_DEFAULT), H5Dclose, quoted(name) + "is damaged");
}

std::vector<std::string> listHdf5Groups(hid_t parent) {
    std::vector<std::string> names;
    auto const add = [](hid_t group, char const* name, H5L_info_t const* link, void* list) -> herr_t {
        H5O_info_t object;
        bool const isOther = link->type == H5L_TYPE_HARD &&
                             H5Oget_info_by_name2(group, name, &object, H5O_INFO_BASIC, H5P_DEFAULT) >= 0 &&
                             object.type != H5O_TYPE_GROUP;
        if (!isOther)
            static_cast<std::vector<std::string>*>(list)->push_back(name);
        return 0;
    };
    if (H5Literate(parent, H5_INDEX_CRT_ORDER, H5_ITER_INC, nullptr, add, &names) < 0) {
        names.clear(); // files of other programs need not keep the order
        requireHdf5(H5Literate(parent, H5_INDEX_NAME, H5_ITER_INC, nullptr, add, &names) >= 0,
                    "the journal is damaged");
    }
    return names;
}

bool hasHdf5Link(hid_t parent, std::string const& name) {
    return !name.empty() && name.find('/') == std::string::npos && H5Lexists(parent, name.c_str(), H5P_DEFAULT) > 0;
}

} // namespace hyx
