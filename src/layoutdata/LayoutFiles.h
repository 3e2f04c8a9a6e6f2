#pragma once

#include <string_view>

namespace layoutdata {

/// The names of the layout files below the program folder. Reader, writer and reset each have a
/// literal of their own; they differ in letter case alone and reach one file. A file that doesn't
/// exist yet gets the writer's form.
namespace levelled {
/// Followed by the level in decimal and `kExtension`.
inline constexpr std::u16string_view kRead = u"\\Posdata\\fastmovers";
inline constexpr std::u16string_view kWrite = u"\\Posdata\\FastMovers";
inline constexpr std::u16string_view kDelete = u"\\Posdata\\Fastmovers";
inline constexpr std::u16string_view kExtension = u".txt";
}  // namespace levelled

namespace large {
inline constexpr std::u16string_view kRead = u"\\Posdata\\fastmovers.txt";
inline constexpr std::u16string_view kWrite = u"\\Posdata\\FastMovers.txt";
}  // namespace large

}  // namespace layoutdata
