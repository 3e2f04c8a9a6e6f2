#pragma once

#include <functional>
#include <string>

namespace bench {

/// Seconds that two pieces of work take: the medians of their runs.
struct Times {
  double ours = 0;
  double peer = 0;
};

/// Runs both so many times, in turns, so that both meet the same machine. The first run of each
/// doesn't count.
Times measure(int rounds, const std::function<void()>& ours, const std::function<void()>& peer);

std::string milliseconds(double seconds);
std::string megabytes(double bytes);

/// One line of the table: name, ours, the peer's, their ratio, the most that it may be, ok or
/// short; tabs between. `bench/run` makes the table of them.
void printRow(const std::string& name, const std::string& ours, const std::string& peer,
              double ratio, double aim);
/// The line of a measurement that failed.
void printFailure(const std::string& name, double aim, const std::string& why);

}  // namespace bench
