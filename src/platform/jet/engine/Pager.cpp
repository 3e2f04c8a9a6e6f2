#include "platform/jet/engine/Pager.h"

#include <algorithm>
#include <utility>

#include "platform/files/ByteFile.h"
#include "platform/files/FileError.h"
#include "platform/jet/engine/FileOperation.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jet/format/PageCipher.h"

namespace jet {
namespace {

using files::ByteFile;
using files::FileProblem;

/// Pages that a session caches: 4 MB of a Jet 4 file.
constexpr std::size_t kMostFrames = 1024;

/// Opens the file for writing where that is allowed, else for reading. Returns true where it is
/// open for reading only.
bool openEitherWay(std::unique_ptr<ByteFile>& file, const std::filesystem::path& path) {
  try {
    file = std::make_unique<ByteFile>(path, ByteFile::Access::ReadWrite);
    return false;
  } catch (const files::FileError& error) {
    if (error.problem() != FileProblem::NoPermission) throw;
  }
  file = std::make_unique<ByteFile>(path, ByteFile::Access::ReadOnly);
  return true;
}

}  // namespace

Pager::Pager(const std::filesystem::path& file, std::u16string_view shownPath)
    : shownPath_(shownPath) {
  withEngineErrors(FileOperation::Opening, shownPath_, [&] {
    readOnly_ = openEitherWay(file_, file);
    file_->lockShared();
    locked_ = true;
  });
  Bytes front(Header::kDecodedSize);
  front.resize(withEngineErrors(FileOperation::Reading, shownPath_,
                                [&] { return file_->readAt(0, front); }));
  const std::optional<Header> header = Header::decode(front);
  if (header) {
    header_ = *header;
    layout_ = &layoutOf(header_.version);
    forget();
  }
  if (!header || pageCount_ <= kRelationshipsPage.value())
    throw error::unrecognizedFormat(shownPath_);
}

Pager::~Pager() = default;

void Pager::lock() {
  withEngineErrors(FileOperation::Opening, shownPath_, [&] { file_->lockShared(); });
  locked_ = true;
  forget();
}

void Pager::release() noexcept {
  file_->unlock();
  locked_ = false;
}

void Pager::forget() {
  frames_.clear();
  scanned_.clear();
  hand_ = 0;
  const std::uint64_t size =
      withEngineErrors(FileOperation::Reading, shownPath_, [&] { return file_->size(); });
  pageCount_ = static_cast<std::uint32_t>(
      std::min<std::uint64_t>(size / layout_->pageSize, kLastPage.value() + 1));
  frameOf_.assign(pageCount_, 0);
}

std::size_t Pager::freeFrame() {
  if (frames_.size() < kMostFrames) {
    frames_.emplace_back();
    return frames_.size() - 1;
  }
  std::size_t chosen = 0;
  if (!scanned_.empty()) {
    chosen = scanned_.back();
    scanned_.pop_back();
  } else {
    while (std::exchange(frames_[hand_].recentlyUsed, false)) hand_ = (hand_ + 1) % frames_.size();
    chosen = std::exchange(hand_, (hand_ + 1) % frames_.size());
  }
  frameOf_[frames_[chosen].number.value()] = 0;
  return chosen;
}

Pager::Frame& Pager::keep(PageNumber number, ByteView encoded) {
  auto page = std::make_shared<Bytes>(encoded.begin(), encoded.end());
  cipherPage(header_.encodingKey, number, *page);
  const std::size_t frame = freeFrame();
  frames_[frame] = {.number = number, .page = std::move(page), .index = {}};
  frameOf_[number.value()] = static_cast<std::uint16_t>(frame + 1);
  return frames_[frame];
}

Pager::Frame& Pager::frameWith(PageNumber number, PageNumber last, const Location& from) {
  if (!locked_) lock();
  if (number == kHeaderPage || number.value() >= pageCount_) raiseOutside(number.value(), from);
  if (const std::size_t at = frameOf_[number.value()]; at != 0) {
    frames_[at - 1].recentlyUsed = true;
    return frames_[at - 1];
  }
  const std::size_t pageSize = layout_->pageSize;
  const std::uint64_t offset = std::uint64_t{number.value()} * pageSize;
  run_.resize((std::min(last.value(), pageCount_ - 1) - number.value() + 1) * pageSize);
  const std::size_t count = withEngineErrors(FileOperation::Reading, shownPath_,
                                             [&] { return file_->readAt(offset, run_); });
  if (count < pageSize) raiseOutside(number.value(), from);
  for (std::size_t i = 1; i < count / pageSize; ++i) {
    const PageNumber next(number.value() + i);
    if (frameOf_[next.value()] == 0) keep(next, ByteView(run_).subspan(i * pageSize, pageSize));
  }
  return keep(number, ByteView(run_).first(pageSize));
}

void Pager::raiseOutside(std::uint64_t number, const Location& from) const {
  raiseDamaged(from, u"it names a page outside the file",
               {.offset = number * layout_->pageSize,
                .size = layout_->pageSize,
                .available = std::size_t{pageCount_} * layout_->pageSize});
}

Pager::Page Pager::read(PageNumber number, const Location& from) {
  return frameWith(number, number, from).page;
}

void Pager::readRun(PageNumber first, PageNumber last, const Location& from) {
  frameWith(first, last, from);
}

void Pager::setScanned(PageNumber number) {
  const std::size_t at = number.value() < frameOf_.size() ? frameOf_[number.value()] : 0;
  if (at != 0 && !std::exchange(frames_[at - 1].scanned, true)) scanned_.push_back(at - 1);
}

std::shared_ptr<const Pager::OpenIndexPage> Pager::readIndexPage(PageNumber number,
                                                                 const Location& from) {
  Frame& frame = frameWith(number, number, from);
  if (!frame.index) {
    IndexPageView view(*layout_, *frame.page, from.at(number));
    frame.index = std::make_shared<OpenIndexPage>(OpenIndexPage{frame.page, std::move(view)});
  }
  return frame.index;
}

void Pager::lockForUpdate() {
  if (readOnly_) throw error::fileReadOnly();
  withEngineErrors(FileOperation::Updating, shownPath_, [&] { file_->lockExclusive(); });
  locked_ = true;
  try {
    bool isReplaced = false;
    withEngineErrors(FileOperation::Updating, shownPath_,
                     [&] { isReplaced = file_->isReplaced(); });
    if (isReplaced) throw error::fileReplaced(shownPath_);
    forget();
  } catch (...) {
    release();
    throw;
  }
}

void Pager::write(PageNumber number, ByteView page) {
  Bytes encoded(page.begin(), page.end());
  cipherPage(header_.encodingKey, number, encoded);
  const std::uint64_t offset = std::uint64_t{number.value()} * layout_->pageSize;
  withEngineErrors(FileOperation::Updating, shownPath_, [&] {
    try {
      file_->writeAt(offset, encoded);
    } catch (const files::FileError&) {
      // On a full disk a part of a new page may have been written.
      if (file_->size() > offset && file_->size() < offset + encoded.size())
        file_->truncate(offset);
      throw;
    }
  });
}

void Pager::sync() {
  withEngineErrors(FileOperation::Updating, shownPath_, [&] { file_->sync(); });
}

}  // namespace jet
