#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// What two pieces of work take, in seconds or bytes: the medians of their runs.
struct Medians {
  double ours = 0;
  double peer = 0;
};

double secondsOf(const std::function<void()>& work);
double median(std::vector<double> values);

/// Runs both so many times, in turns, so that both meet the same machine; each run tells what it
/// took. The first run of each doesn't count.
Medians measure(int rounds, const std::function<double()>& ours,
                const std::function<double()>& peer);

std::string milliseconds(double seconds);
std::string megabytes(double bytes);

/// One line of the table: name, ours, the peer's, their ratio, the most that it may be, ok or
/// short; tabs between. `bench/run` makes the table of them.
void printRow(const std::string& name, const std::string& ours, const std::string& peer,
              double ratio, double aim);
/// The line of a measurement that failed.
void printFailure(const std::string& name, double aim, const std::string& why);

/// Measures the seconds of both and prints the line.
void compare(const std::string& name, double aim, int rounds, const std::function<void()>& ours,
             const std::function<void()>& peer);
/// The same for runs that tell themselves which part of them counts, in seconds.
void compareParts(const std::string& name, double aim, int rounds,
                  const std::function<double()>& ours, const std::function<double()>& peer);

}  // namespace bench
