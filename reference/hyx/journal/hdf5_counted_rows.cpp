// Finds the rows of a state by adding up how many came before.
#include "reference/hyx/journal/hdf5_counted_rows.h"

#include <algorithm>
#include <stdexcept>

namespace hyx {

CountedRows::CountedRows(hid_t group, std::string const& name, std::string const& countName, size_t columns) {
    if (!hasHdf5Link(group, name))
        return;
    m_counts = Hdf5Rows::open(group, countName, 1);
    m_rows = Hdf5Rows::open(group, name, columns);
    if (m_rows.numItems() != 1)
        throw std::runtime_error("the journal is damaged: its " + name + " are not one in a row");
    constexpr size_t block = 1024; // states: how many there are is only a claim
    m_starts = {0};
    for (size_t row = 0; row < m_counts.numRows(); row += block)
        for (double const count : m_counts.read(row, std::min(block, m_counts.numRows() - row))) {
            if (!(count >= 0 && count <= double(m_rows.numRows() - m_starts.back())))
                throw std::runtime_error("the journal is damaged: its " + name + " are not as many as were counted");
            m_starts.push_back(m_starts.back() + size_t(count));
        }
}

std::vector<double> CountedRows::read(size_t state, size_t owner) const {
    size_t const place = state * numOwners() + owner, first = m_starts.at(place);
    return m_rows.read(first, m_starts.at(place + 1) - first);
}

} // namespace hyx
