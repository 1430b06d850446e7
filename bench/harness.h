#pragma once

#include <functional>
#include <string>
#include <vector>

namespace cvlog::bench {

/// One measured figure beside its peer, both taken in the same run. The ratio value / peer is what counts: it holds
/// when it is not above the goal.
struct Figure {
    std::string name;
    double value = 0;
    std::string unit;
    double peer = 0;
    double goal = 0;

    double ratio() const { return value / peer; }
    bool holds() const { return ratio() <= goal; }
};

using Measure = std::function<std::vector<Figure>()>;

/// Announces a measure at start-up: `static const Registration r("rows.append", measure);`. The name is what a filter
/// on the command line is looked for in.
struct Registration {
    Registration(std::string name, Measure measure);
};

/// Seconds that one run of the action takes, with no free memory left from what ran before where that can be had.
double seconds(const std::function<void()>& action);

struct Pair {
    double value;
    double peer;
};

/// The medians of `rounds` runs of both, in turn, so that a drift of the machine's speed meets both alike. Each
/// function answers the figure of one run.
Pair medians(int rounds, const std::function<double()>& value, const std::function<double()>& peer);

} // namespace cvlog::bench
