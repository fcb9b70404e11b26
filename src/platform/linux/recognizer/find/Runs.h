#pragma once

#include <vector>

namespace lucentra {

/// Consecutive pixels of one row that are alike.
struct Run
{
    int y;
    int left;
    int right; // inclusive
    int root;  // a run that it hangs together with; its own index for the first of them
};

/// The first of the runs that hang together with one.
int rootOf(std::vector<Run> &runs, int index);

/// Gives runs (sorted by row, then column; each its own root) that touch a common root. Those of neighbouring rows
/// touch where they are at most `reach` columns apart: with 0 side by side, with 1 also at a corner.
void connect(std::vector<Run> &runs, int reach);

} // namespace lucentra
