#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace jet {

/// What one character adds to a text's key.
struct TextWeight {
  std::array<std::uint8_t, 2> inlineBytes{};  ///< primary weight, in the key's first part
  std::uint8_t inlineCount = 0;
  std::uint8_t mark = 0;         ///< accent, 0 for none
  std::uint8_t ignorable = 0;    ///< code of a character that counts last of all, 0 for none
  std::uint8_t significant = 0;  ///< Jet 3: how many letters it counts as between accents
  bool plain = false;            ///< one inline byte and nothing else
};

/// Parses weights written as one word per character: bytes in hexadecimal; "/m" or "/mm" a mark;
/// "~cc" an ignorable character; each "+" one significant letter; "-" a character without weight.
template <std::size_t Count>
consteval std::array<TextWeight, Count> parseWeights(std::string_view words) {
  const auto digit = [](char c) {
    return static_cast<std::uint8_t>(c <= '9' ? c - '0' : c - 'a' + 10);
  };
  std::array<TextWeight, Count> weights{};
  std::size_t at = 0;
  for (TextWeight& weight : weights) {
    while (words[at] == ' ') ++at;
    if (words[at] == '~') {
      weight.ignorable =
          static_cast<std::uint8_t>(digit(words[at + 1]) << 4 | digit(words[at + 2]));
      at += 3;
      continue;
    }
    if (words[at] == '-') {
      ++at;
      continue;
    }
    for (; at < words.size() && words[at] != ' ' && words[at] != '/' && words[at] != '+'; at += 2)
      weight.inlineBytes[weight.inlineCount++] =
          static_cast<std::uint8_t>(digit(words[at]) << 4 | digit(words[at + 1]));
    if (at < words.size() && words[at] == '/')
      for (++at; at < words.size() && words[at] != ' '; ++at)
        weight.mark = static_cast<std::uint8_t>(weight.mark << 4 | digit(words[at]));
    for (; at < words.size() && words[at] == '+'; ++at) ++weight.significant;
    weight.plain = weight.inlineCount == 1 && weight.mark == 0 && weight.significant == 0;
  }
  return weights;
}

/// Jet 4, U+0000 to U+00FF; sixteen characters a line.
inline constexpr auto kGeneral4Latin = parseWeights<256>(
    "- ~03 ~04 ~05 ~06 ~07 ~08 ~09 ~0a 0803 0804 0805 0806 0807 ~0b ~0c "
    "~0d ~0e ~0f ~10 ~11 ~12 ~13 ~14 ~15 ~16 ~17 ~18 ~19 ~1a ~1b ~1c "
    "07 09 0a 0c 0e 10 12 ~80 14 16 18 2c 1a ~82 1c 1e "
    "36 38 3a 3c 3e 40 42 44 46 48 20 22 2e 30 32 24 "
    "26 4a 4c 4d 4f 51 53 55 57 59 5b 5c 5e 60 62 64 "
    "66 68 69 6b 6d 6f 71 73 75 76 78 27 29 2a 2b02 2b03 "
    "2b07 4a 4c 4d 4f 51 53 55 57 59 5b 5c 5e 60 62 64 "
    "66 68 69 6b 6d 6f 71 73 75 76 78 2b09 2b0b 2b0d 2b0f ~1d "
    "~1e ~1f ~20 ~21 ~22 ~23 ~24 ~25 ~26 ~27 ~28 ~29 ~2a ~2b ~2c ~2d "
    "~2e ~2f ~30 ~31 ~32 ~33 ~34 ~35 ~36 ~37 ~38 ~39 ~3a ~3b ~3c ~3d "
    "0802 2b10 34a6 34a7 34a8 34a9 2b11 34aa 2b12 34ab 4a/03 3305 34ac ~83 34ad 2b13 "
    "34ae 3304 3a 3c 2b14 34af 34b0 34b1 2b15 38 64/03 3307 3712 3716 371a 2b16 "
    "4a/0f 4a/0e 4a/12 4a/19 4a/13 4a/1a 4a51 4d/1c 51/0f 51/0e 51/12 51/13 59/0f 59/0e 59/12 "
    "59/13 "
    "4f/68 62/19 64/0f 64/0e 64/12 64/19 64/13 3309 64/21 6f/0f 6f/0e 6f/12 6f/13 76/0e 6d57 6b6b "
    "4a/0f 4a/0e 4a/12 4a/19 4a/13 4a/1a 4a51 4d/1c 51/0f 51/0e 51/12 51/13 59/0f 59/0e 59/12 "
    "59/13 "
    "4f/68 62/19 64/0f 64/0e 64/12 64/19 64/13 330a 64/21 6f/0f 6f/0e 6f/12 6f/13 76/0e 6d57 "
    "76/13 ");

/// Jet 4, U+0100 to U+017F.
inline constexpr auto kGeneral4Extended = parseWeights<128>(
    "4a/17 4a/17 4a/15 4a/15 4a/1b 4a/1b 4d/0e 4d/0e 4d/12 4d/12 4d/10 4d/10 4d/14 4d/14 4f/14 "
    "4f/14 "
    "4f/1e 4f/1e 51/17 51/17 51/15 51/15 51/10 51/10 51/1b 51/1b 51/14 51/14 55/12 55/12 55/15 "
    "55/15 "
    "55/10 55/10 55/1c 55/1c 57/12 57/12 57/1e 57/1e 59/19 59/19 59/17 59/17 59/15 59/15 59/1b "
    "59/1b "
    "59/10 59/03 595b 595b 5b/12 5b/12 5c/1c 5c/1c 5c/03 5e/0e 5e/0e 5e/1c 5e/1c 5e/14 5e/14 5e/11 "
    "5e/11 5e/1f 5e/1f 62/0e 62/0e 62/1c 62/1c 62/14 62/14 62/48 6305 6305 64/17 64/17 64/15 64/15 "
    "64/1d 64/1d 6451 6451 69/0e 69/0e 69/1c 69/1c 69/14 69/14 6b/0e 6b/0e 6b/12 6b/12 6b/1c 6b/1c "
    "6b/14 6b/14 6d/1c 6d/1c 6d/14 6d/14 6e06/1e 6e06/1e 6f/19 6f/19 6f/17 6f/17 6f/15 6f/15 6f/1a "
    "6f/1a "
    "6f/1d 6f/1d 6f/1b 6f/1b 73/12 73/12 76/12 76/12 76/13 78/0e 78/0e 78/10 78/10 78/14 78/14 "
    "6c06 ");

/// Jet 3, the bytes of windows-1252.
inline constexpr auto kGeneral3 = parseWeights<256>(
    "10 10 10 10 10 10 10 10 10 11 10 10 10 10 10 10 "
    "10 10 10 10 10 10 10 10 10 10 10 10 10 10 10 10 "
    "11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20 "
    "56 57 58 59 5a 5b 5c 5d 5e 5f 21 22 23 24 25 26 "
    "27 60+ 61 62+ 64 66+ 67 68 69 6a+ 6b 6c 6d 6f 70+ 72+ "
    "73 74 75 76+ 77 78+ 7a 7b 7c 7d+ 7e 28 29 2a 2b 2c "
    "2d 60+ 61 62+ 64 66+ 67 68 69 6a+ 6b 6c 6d 6f 70+ 72+ "
    "73 74 75 76+ 77 78+ 7a 7b 7c 7d+ 7e 2e 2f 30 31 10 "
    "10 10 18 32 13 33 34 35 36 37 76/a 18 7266++ 10 10 10 "
    "10 18 18 13 13 38 1e 1e 39 3a 76/a 18 7266++ 10 10 7d/6 "
    "11 3b 3c 3d 3e 3f 40 41 42 43 44 13 45 1e 46 47 "
    "48 49 58 59 4a 4b 4c 4d 4e 57 4f 13 50 51 52 53 "
    "60/3 60/4 60/5 60/7 60/6 60/8 6066++ 62/9 66/3 66/4 66/5 66/6 6a/3 6a/4 6a/5 6a/6 "
    "65 70/7 72/3 72/4 72/5 72/7 72/6 54 81 78/3 78/4 78/5 78/6 7d/4 7f 7676++ "
    "60/3 60/4 60/5 60/7 60/6 60/8 6066++ 62/9 66/3 66/4 66/5 66/6 6a/3 6a/4 6a/5 6a/6 "
    "65 70/7 72/3 72/4 72/5 72/7 72/6 55 81 78/3 78/4 78/5 78/6 7d/4 7f 7d/6 ");

/// Jet 4: the characters of windows-1252 above U+017F, ascending, and their weights.
inline constexpr std::array<char16_t, 20> kGeneral4OtherCharacters{
    0x0192, 0x02C6, 0x02DC, 0x2013, 0x2014, 0x2018, 0x2019, 0x201A, 0x201C, 0x201D,
    0x201E, 0x2020, 0x2021, 0x2022, 0x2026, 0x2030, 0x2039, 0x203A, 0x20AC, 0x2122};
inline constexpr auto kGeneral4Other = parseWeights<20>(
    "53/7b 2b02/03 2b1c ~89 ~8b 2b37 2b38 2b39 2b3b 2b3c 2b3d 34b3 34b4 34b5 34b9 34ba 2b46 2b47 "
    "35a1 6e04 ");

}  // namespace jet
