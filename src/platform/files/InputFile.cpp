#include "platform/files/InputFile.h"

#include <array>
#include <cstdint>
#include <span>

#include "platform/files/ByteFile.h"
#include "platform/files/ProgramFolder.h"
#include "platform/runtime/CodePage.h"

namespace files {

using runtime::ErrorNumber;
using runtime::RunTimeError;

/// Reads the file's bytes sequentially, in blocks.
struct InputFile::Bytes {
  explicit Bytes(std::u16string_view path) : file(resolve(path), ByteFile::Access::ReadOnly) {}

  bool atEnd() {
    if (next < block.size()) return false;
    offset += block.size();
    block = std::span(store).first(file.readAt(offset, store));
    next = 0;
    return block.empty();
  }

  /// The unread bytes of the current block.
  std::string_view rest() const {
    return {reinterpret_cast<const char*>(block.data()) + next, block.size() - next};
  }

  ByteFile file;
  std::array<std::uint8_t, 16'384> store{};
  std::span<std::uint8_t> block;
  std::size_t next = 0;
  std::uint64_t offset = 0;
};

InputFile::InputFile(std::u16string_view path) : bytes_(std::make_unique<Bytes>(path)) {}
InputFile::~InputFile() = default;

std::u16string InputFile::lineInput() {
  if (bytes_->atEnd()) throw RunTimeError(ErrorNumber::InputPastEnd);
  std::string line;
  while (!bytes_->atEnd()) {
    const std::string_view rest = bytes_->rest();
    const std::string_view part = rest.substr(0, rest.find('\r'));
    if (line.size() + part.size() > kLineLimit) throw RunTimeError(ErrorNumber::OutOfMemory);
    line += part;
    bytes_->next += part.size();
    if (part.size() == rest.size()) continue;
    ++bytes_->next;
    if (!bytes_->atEnd() && bytes_->rest().front() == '\n') ++bytes_->next;
    break;
  }
  return runtime::fromCodePage(line);
}

}  // namespace files
