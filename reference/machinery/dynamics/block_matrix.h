// Sparse symmetric systems of small dense blocks, as joints make them.
#pragma once

#include <utility>
#include <vector>

namespace hyx {

/// A symmetric matrix of blocks, one for each joint and one for each pair of joints that share a body, and its exact
/// solution. Blocks are eliminated in an order that keeps the filling small.
class BlockMatrix {
public:
    /// `pairs` couples blocks with different numbers.
    void setStructure(int numBlocks, std::vector<std::pair<int, int>> const& pairs);
    /// Gives each block its number of rows and sets all elements to zero.
    void reset(std::vector<int> const& sizes);

    int offset(int block) const { return m_offsets[block]; }

    /// The element of a diagonal block, row at or after column.
    double& diagonal(int block, int row, int column) {
        return m_values[m_diagonals[m_places[block]] + row * m_sizes[m_places[block]] + column];
    }

    /// The block of a coupled pair: its first element, the distance between rows, and whether it is stored turned.
    struct Coupling {
        double* values;
        int stride;
        bool turned;

        double& at(int row, int column) const {
            return turned ? values[column * stride + row] : values[row * stride + column];
        }
    };

    Coupling coupling(int pair);

    /// Rows that follow from the others are found by their pivots and left out.
    void factor();
    /// Replaces the right hand side, by rows of blocks, with the solution.
    void solve(std::vector<double>& values) const;

private:
    void orderBlocks(int numBlocks, std::vector<std::pair<int, int>> const& pairs);
    void factorDiagonal(int place);
    void eliminate(int place);

    /// A block below the diagonal: the place of its row, and where its elements start.
    struct Below {
        int place;
        int start = 0;
    };

    std::vector<int> m_places;
    std::vector<int> m_blocks;
    std::vector<std::vector<Below>> m_below;
    /// For each place, where the products of its blocks below go: for each pair of them, by place and number.
    std::vector<std::vector<int>> m_targets;

    /// For each pair given, the place of its column, the number in it, and whether rows and columns are exchanged.
    struct PairPlace {
        int column;
        int number;
        bool turned;
    };

    std::vector<PairPlace> m_pairs;
    std::vector<int> m_sizes;
    std::vector<int> m_diagonals;
    std::vector<int> m_offsets;
    std::vector<double> m_values;
    std::vector<double> m_inversePivots;
    std::vector<double> m_scratch;
};

} // namespace hyx
