#include "Measurement.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>

namespace bench {
namespace {

std::string decimal(double value, int digits, const char* unit) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f%s", digits, value, unit);
  return text;
}

}  // namespace

double secondsOf(const std::function<void()>& work) {
  const auto began = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Medians measure(int rounds, const std::function<double()>& ours,
                const std::function<double()>& peer) {
  std::vector<double> oursTook;
  std::vector<double> peerTook;
  ours();
  peer();
  for (int i = 0; i < rounds; ++i) {
    oursTook.push_back(ours());
    peerTook.push_back(peer());
  }
  return {median(oursTook), median(peerTook)};
}

std::string milliseconds(double seconds) {
  return decimal(seconds * 1000, seconds < 0.01 ? 3 : 1, " ms");
}

std::string megabytes(double bytes) {
  return decimal(bytes / 1e6, 1, " MB");
}

void printRow(const std::string& name, const std::string& ours, const std::string& peer,
              double ratio, double aim) {
  std::cout << name << '\t' << ours << '\t' << peer << '\t' << decimal(ratio, 2, "") << '\t'
            << decimal(aim, 2, "") << '\t' << (ratio <= aim ? "ok" : "short") << std::endl;
}

void printFailure(const std::string& name, double aim, const std::string& why) {
  std::cout << name << "\t-\t-\t-\t" << decimal(aim, 2, "") << "\tshort" << std::endl;
  std::cerr << name << ": " << why << '\n';
}

void compare(const std::string& name, double aim, int rounds, const std::function<void()>& ours,
             const std::function<void()>& peer) {
  compareParts(
      name, aim, rounds, [&] { return secondsOf(ours); }, [&] { return secondsOf(peer); });
}

void compareParts(const std::string& name, double aim, int rounds,
                  const std::function<double()>& ours, const std::function<double()>& peer) {
  try {
    const Medians took = measure(rounds, ours, peer);
    printRow(name, milliseconds(took.ours), milliseconds(took.peer), took.ours / took.peer, aim);
  } catch (const std::exception& error) {
    printFailure(name, aim, error.what());
  }
}

}  // namespace bench
