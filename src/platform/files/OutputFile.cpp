#include "platform/files/OutputFile.h"

#include <cstdint>
#include <utility>

#include "platform/files/ByteFile.h"
#include "platform/files/ProgramFolder.h"
#include "platform/runtime/CodePage.h"

namespace files {

using runtime::ErrorNumber;
using runtime::RunTimeError;

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

}  // namespace files
