// The elimination of block after block.
#include "reference/machinery/dynamics/block_matrix.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace hyx {

namespace {

/// Of a row's first diagonal element. What is left of a row that follows from others is rounding.
constexpr double leastPivot = 1e-9;

} // namespace

void BlockMatrix::setStructure(int numBlocks, std::vector<std::pair<int, int>> const& pairs) {
    orderBlocks(numBlocks, pairs);
    auto const number = [this](int column, int row) {
        auto const& below = m_below[column];
        return static_cast<int>(
            std::find_if(below.begin(), below.end(), [row](Below const& b) { return b.place == row; }) - below.begin());
    };
    m_pairs.clear();
    for (auto const& [first, second] : pairs) {
        int const column = std::min(m_places[first], m_places[second]);
        int const row = std::max(m_places[first], m_places[second]);
        m_pairs.push_back({column, number(column, row), m_places[first] == column});
    }
    m_targets.assign(numBlocks, {});
    for (int place = 0; place < numBlocks; ++place)
        for (std::size_t a = 0; a < m_below[place].size(); ++a)
            for (std::size_t b = a + 1; b < m_below[place].size(); ++b)
                m_targets[place].push_back(number(m_below[place][a].place, m_below[place][b].place));
}

void BlockMatrix::orderBlocks(int numBlocks, std::vector<std::pair<int, int>> const& pairs) {
    std::vector<std::set<int>> neighbours(numBlocks);
    for (auto const& [first, second] : pairs) {
        neighbours[first].insert(second);
        neighbours[second].insert(first);
    }
    std::set<std::pair<std::size_t, int>> waiting;
    for (int block = 0; block < numBlocks; ++block)
        waiting.emplace(neighbours[block].size(), block);
    m_places.assign(numBlocks, 0);
    m_blocks.clear();
    std::vector<std::vector<int>> below;
    while (!waiting.empty()) {
        int const block = waiting.begin()->second;
        waiting.erase(waiting.begin());
        m_places[block] = static_cast<int>(m_blocks.size());
        m_blocks.push_back(block);
        below.emplace_back(neighbours[block].begin(), neighbours[block].end());
        for (int const one : below.back()) {
            waiting.erase({neighbours[one].size(), one});
            neighbours[one].erase(block);
            neighbours[one].insert(below.back().begin(), below.back().end());
            neighbours[one].erase(one);
            waiting.emplace(neighbours[one].size(), one);
        }
    }
    m_below.assign(numBlocks, {});
    for (int place = 0; place < numBlocks; ++place) {
        for (int const block : below[place])
            m_below[place].push_back({m_places[block]});
        std::sort(m_below[place].begin(), m_below[place].end(),
                  [](Below const& a, Below const& b) { return a.place < b.place; });
    }
}

void BlockMatrix::reset(std::vector<int> const& sizes) {
    int const numBlocks = static_cast<int>(sizes.size());
    m_sizes.resize(numBlocks);
    m_diagonals.resize(numBlocks);
    m_offsets.resize(numBlocks);
    int numRows = 0;
    for (int block = 0; block < numBlocks; ++block) {
        m_sizes[m_places[block]] = sizes[block];
        m_offsets[block] = numRows;
        numRows += sizes[block];
    }
    int numValues = 0;
    for (int place = 0; place < numBlocks; ++place) {
        m_diagonals[place] = numValues;
        numValues += m_sizes[place] * m_sizes[place];
        for (Below& below : m_below[place]) {
            below.start = numValues;
            numValues += m_sizes[below.place] * m_sizes[place];
        }
    }
    m_values.assign(numValues, 0);
    m_inversePivots.assign(numRows, 0);
}

BlockMatrix::Coupling BlockMatrix::coupling(int pair) {
    auto const& [column, number, turned] = m_pairs[pair];
    return {m_values.data() + m_below[column][number].start, m_sizes[column], turned};
}

void BlockMatrix::factor() {
    for (int place = 0; place < static_cast<int>(m_sizes.size()); ++place) {
        factorDiagonal(place);
        eliminate(place);
    }
}

/// The first diagonal elements were noted in the strict upper half's stead: pivots are measured against them.
void BlockMatrix::factorDiagonal(int place) {
    int const size = m_sizes[place];
    double* const a = m_values.data() + m_diagonals[place];
    double* const inverse = m_inversePivots.data() + m_offsets[m_blocks[place]];
    for (int j = 0; j < size; ++j) {
        double pivot = a[j * size + j];
        for (int k = 0; k < j; ++k)
            if (inverse[k] != 0)
                pivot -= a[j * size + k] * a[j * size + k] / inverse[k];
        inverse[j] = pivot > leastPivot ? 1 / pivot : 0;
        for (int i = j + 1; i < size; ++i) {
            double sum = a[i * size + j];
            for (int k = 0; k < j; ++k)
                if (inverse[k] != 0)
                    sum -= a[i * size + k] * a[j * size + k] / inverse[k];
            a[i * size + j] = sum * inverse[j];
        }
    }
}

void BlockMatrix::eliminate(int place) {
    int const size = m_sizes[place];
    double const* const l = m_values.data() + m_diagonals[place];
    double const* const inverse = m_inversePivots.data() + m_offsets[m_blocks[place]];
    auto const& below = m_below[place];
    std::size_t target = 0;
    for (std::size_t a = 0; a < below.size(); ++a) {
        int const rows = m_sizes[below[a].place];
        double* const block = m_values.data() + below[a].start;
        m_scratch.assign(block, block + rows * size);
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < size; ++c) {
                double sum = m_scratch[r * size + c];
                for (int k = 0; k < c; ++k)
                    sum -= m_scratch[r * size + k] * l[c * size + k];
                m_scratch[r * size + c] = inverse[c] == 0 ? 0 : sum;
            }
        // The blocks before this one hold their final rows already, so each pair is met once, from its later member.
        double* const diagonal = m_values.data() + m_diagonals[below[a].place];
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < size; ++c)
                block[r * size + c] = m_scratch[r * size + c] * inverse[c];
        for (int r = 0; r < rows; ++r)
            for (int s = 0; s <= r; ++s) {
                double sum = 0;
                for (int c = 0; c < size; ++c)
                    sum += m_scratch[r * size + c] * block[s * size + c];
                diagonal[r * rows + s] -= sum;
            }
        target = 0;
        for (std::size_t b = 0; b < a; ++b) {
            // Targets are listed by first member; the pair (b, a) lies behind those of the members before b.
            std::size_t const index = b * below.size() - b * (b + 1) / 2 + (a - b - 1);
            int const columns = m_sizes[below[b].place];
            double const* const other = m_values.data() + below[b].start;
            double* const values = m_values.data() + m_below[below[b].place][m_targets[place][target + index]].start;
            for (int r = 0; r < rows; ++r)
                for (int s = 0; s < columns; ++s) {
                    double sum = 0;
                    for (int c = 0; c < size; ++c)
                        sum += m_scratch[r * size + c] * other[s * size + c];
                    values[r * columns + s] -= sum;
                }
        }
    }
}

void BlockMatrix::solve(std::vector<double>& values) const {
    int const numBlocks = static_cast<int>(m_sizes.size());
    for (int place = 0; place < numBlocks; ++place) {
        int const size = m_sizes[place];
        double const* const l = m_values.data() + m_diagonals[place];
        double* const x = values.data() + m_offsets[m_blocks[place]];
        for (int i = 1; i < size; ++i)
            for (int k = 0; k < i; ++k)
                x[i] -= l[i * size + k] * x[k];
        for (Below const& below : m_below[place]) {
            double* const y = values.data() + m_offsets[m_blocks[below.place]];
            for (int r = 0; r < m_sizes[below.place]; ++r)
                for (int c = 0; c < size; ++c)
                    y[r] -= m_values[below.start + r * size + c] * x[c];
        }
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] *= m_inversePivots[i];
    for (int place = numBlocks - 1; place >= 0; --place) {
        int const size = m_sizes[place];
        double const* const l = m_values.data() + m_diagonals[place];
        double* const x = values.data() + m_offsets[m_blocks[place]];
        for (Below const& below : m_below[place]) {
            double const* const y = values.data() + m_offsets[m_blocks[below.place]];
            for (int r = 0; r < m_sizes[below.place]; ++r)
                for (int c = 0; c < size; ++c)
                    x[c] -= m_values[below.start + r * size + c] * y[r];
        }
        for (int i = size - 2; i >= 0; --i)
            for (int k = i + 1; k < size; ++k)
                x[i] -= l[k * size + i] * x[k];
    }
}

} // namespace hyx
