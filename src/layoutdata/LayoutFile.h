#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "layoutdata/KeyRecord.h"
#include "platform/files/SequentialFile.h"

/// The layout files, opened here and nowhere else. Each is text: a line for each key, in ascending
/// order, every line ended by CR LF, with no header and no comments.
namespace layoutdata {

/// The names of the layout files below the program folder. Reader, writer and reset each have a
/// literal of their own; they differ in letter case alone and reach one file. A file that doesn't
/// exist yet gets the writer's form.
namespace levelled {
/// Each followed by the level in decimal and ".txt": see `levelFile`.
inline constexpr std::u16string_view kRead = u"\\Posdata\\fastmovers";
inline constexpr std::u16string_view kWrite = u"\\Posdata\\FastMovers";
inline constexpr std::u16string_view kDelete = u"\\Posdata\\Fastmovers";
}  // namespace levelled

namespace large {
inline constexpr std::u16string_view kRead = u"\\Posdata\\fastmovers.txt";
inline constexpr std::u16string_view kWrite = u"\\Posdata\\FastMovers.txt";
}  // namespace large

/// The path of a level's file, by one of the literals of `levelled`.
std::u16string levelFile(std::u16string_view literal, std::int16_t level);

/// Reads a layout file key by key. What the keys take from a line is the editor's business, and so
/// is a fault.
class LayoutReader {
 public:
  /// Raises what `files::InputFile` raises.
  explicit LayoutReader(std::u16string_view path) : file_(path) {}

  /// The line of the next key. Raises InputPastEnd past the end of the file, and what
  /// `files::InputFile::lineInput` raises.
  KeyLine next() { return KeyLine(file_.lineInput()); }

 private:
  files::InputFile file_;
};

/// Writes a layout file key by key. The old content goes when the file is opened, and each line
/// reaches the system as it is written: a failure leaves the lines before it.
class LayoutWriter {
 public:
  /// Raises what `files::OutputFile` raises.
  explicit LayoutWriter(std::u16string_view path) : file_(path) {}

  /// Nothing is checked or escaped: a caption with a comma makes a line that the reader takes
  /// otherwise. Raises DiskFull and DeviceIoError.
  void write(const KeyRecord& record) { file_.print(toLine(record)); }
  /// Raises DeviceIoError or DiskFull where the system kept a failure back until now.
  void close() { file_.close(); }

 private:
  files::OutputFile file_;
};

}  // namespace layoutdata
