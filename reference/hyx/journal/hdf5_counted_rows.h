// Rows of which each state has another number: grains, contacts.
#pragma once

#include "reference/hyx/journal/hdf5_data.h"

#include <string>
#include <vector>

namespace hyx {

/// Reads one long array of all rows of all states, and how many there are of each owner in each state; of a group
/// without such an array nothing.
class CountedRows {
public:
    CountedRows() = default;
    CountedRows(hid_t group, std::string const& name, std::string const& countName, size_t columns);

    size_t numOwners() const { return m_counts.numItems(); }

    size_t numStates() const { return m_counts.numRows(); }

    /// The numbers of an owner's rows in a state, one row after the other.
    std::vector<double> read(size_t state, size_t owner = 0) const;

private:
    Hdf5Rows m_counts, m_rows;
    std::vector<size_t> m_starts; ///< the first row of each owner in each state, and the end
};

} // namespace hyx
