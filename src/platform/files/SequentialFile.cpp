#include "platform/files/SequentialFile.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/files/ByteFile.h"
#include "platform/files/ProgramFolder.h"
#include "platform/files/seam/FaultSeam.h"
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

struct OutputFile::Bytes {
  explicit Bytes(std::u16string_view path) : file(resolve(path), ByteFile::Access::Output) {}

  ByteFile file;
  std::uint64_t offset = 0;
};

OutputFile::OutputFile(std::u16string_view path) : bytes_(std::make_unique<Bytes>(path)) {}
OutputFile::~OutputFile() = default;

void OutputFile::print(std::u16string_view line) {
  if (!bytes_) throw RunTimeError(ErrorNumber::BadFileMode);
  const std::string bytes = runtime::toCodePage(line) + "\r\n";
  bytes_->file.writeAt(bytes_->offset,
                       {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  bytes_->offset += bytes.size();
}

void OutputFile::close() {
  const std::unique_ptr<Bytes> closing = std::move(bytes_);
  if (closing) closing->file.close();
}

void kill(std::u16string_view path) {
  const std::filesystem::path file = resolve(path);
  std::error_code ignored;
  const bool isThere = std::filesystem::is_regular_file(file, ignored);
  // A read-only file may not be deleted either: opening it for writing raises the error.
  if (isThere) ByteFile(file, ByteFile::Access::ReadWrite).close();
  allowedBytes({FileStep::Kind::Delete, file});
  if (::unlink(file.c_str()) != 0) raiseFileError(file, errno, FilePurpose::Write);
}

}  // namespace files

namespace Scripting {

bool FileSystemObject::FileExists(std::u16string_view path) const {
  std::error_code failure;
  const auto status = std::filesystem::status(files::resolve(path), failure);
  return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace Scripting
