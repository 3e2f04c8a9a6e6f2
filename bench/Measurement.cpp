#include "Measurement.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <vector>

namespace bench {
namespace {

double secondsOf(const std::function<void()>& work) {
  const auto began = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
}

double median(std::vector<double> seconds) {
  const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
  std::nth_element(seconds.begin(), middle, seconds.end());
  return *middle;
}

std::string decimal(double value, int digits, const char* unit) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f%s", digits, value, unit);
  return text;
}

}  // namespace

Times measure(int rounds, const std::function<void()>& ours, const std::function<void()>& peer) {
  std::vector<double> oursSeconds;
  std::vector<double> peerSeconds;
  ours();
  peer();
  for (int i = 0; i < rounds; ++i) {
    oursSeconds.push_back(secondsOf(ours));
    peerSeconds.push_back(secondsOf(peer));
  }
  return {median(oursSeconds), median(peerSeconds)};
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

}  // namespace bench
