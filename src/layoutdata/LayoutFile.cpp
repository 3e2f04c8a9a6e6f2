#include "layoutdata/LayoutFile.h"

#include "platform/files/InputFile.h"
#include "platform/files/OutputFile.h"
#include "platform/files/ProgramFolder.h"
#include "platform/runtime/Conversion.h"

namespace layoutdata {

std::u16string levelFile(std::u16string_view literal, std::int16_t level) {
  return files::programFolder().append(literal).append(runtime::toText(level)).append(u".txt");
}

LayoutReader::LayoutReader(std::u16string_view path)
    : file_(std::make_unique<files::InputFile>(path)) {}
LayoutReader::~LayoutReader() = default;

KeyLine LayoutReader::next() {
  return KeyLine(file_->lineInput());
}

LayoutWriter::LayoutWriter(std::u16string_view path)
    : file_(std::make_unique<files::OutputFile>(path)) {}
LayoutWriter::~LayoutWriter() = default;

void LayoutWriter::write(const KeyRecord& record) {
  file_->print(toLine(record));
}

void LayoutWriter::close() {
  file_->close();
}

}  // namespace layoutdata
