#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// The cost of two pieces of work, in seconds or bytes: the medians of their runs.
struct Medians {
  double ours = 0;
  double peer = 0;
};

double secondsOf(const std::function<void()>& work);
double median(std::vector<double> values);

/// Runs both `rounds` times, alternating, so that both run under the same conditions. Each run
/// returns its cost. The first run of each doesn't count.
Medians measure(int rounds, const std::function<double()>& ours,
                const std::function<double()>& peer);

std::string milliseconds(double seconds);
std::string megabytes(double bytes);

/// Prints one row of the table, separated by tabs: name, ours, the peer's, their ratio, the
/// greatest ratio that meets the aim, and "ok" or "short". `bench/run` formats the table.
void printRow(const std::string& name, const std::string& ours, const std::string& peer,
              double ratio, double aim);
/// Prints the row of a measurement that failed.
void printFailure(const std::string& name, double aim, const std::string& why);

/// Measures the seconds of both and prints the row.
void compare(const std::string& name, double aim, int rounds, const std::function<void()>& ours,
             const std::function<void()>& peer);
/// The same for runs that measure a part of themselves and return its seconds.
void compareParts(const std::string& name, double aim, int rounds,
                  const std::function<double()>& ours, const std::function<double()>& peer);

}  // namespace bench
