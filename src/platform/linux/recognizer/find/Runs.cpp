#include "find/Runs.h"

#include <algorithm>

namespace lucentra {

int rootOf(std::vector<Run> &runs, int index)
{
    while (runs[std::size_t(index)].root != index) {
        int &root = runs[std::size_t(index)].root;
        root = runs[std::size_t(root)].root;
        index = root;
    }
    return index;
}

namespace {

void join(std::vector<Run> &runs, int a, int b)
{
    a = rootOf(runs, a);
    b = rootOf(runs, b);
    runs[std::size_t(std::max(a, b))].root = std::min(a, b);
}

} // namespace

void connect(std::vector<Run> &runs, int reach)
{
    std::size_t above = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const Run &run = runs[i];
        while (above < i &&
               (runs[above].y < run.y - 1 || (runs[above].y == run.y - 1 && runs[above].right + reach < run.left)))
            ++above;
        for (std::size_t j = above; j < i && runs[j].y == run.y - 1 && runs[j].left <= run.right + reach; ++j)
            join(runs, int(j), int(i));
    }
}

} // namespace lucentra
