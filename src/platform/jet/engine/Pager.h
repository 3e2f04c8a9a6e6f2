#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Header.h"
#include "platform/jet/format/IndexPage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/Numbers.h"

namespace files {
class ByteFile;
}

namespace jet {

/// The file as decoded pages, which are read on demand, one by one or in runs, under the file's
/// shared lock. A bounded number of pages is cached, none for longer than the lock. This class
/// alone takes and releases locks.
class Pager {
 public:
  using Page = std::shared_ptr<const Bytes>;

  /// Opens the file, takes the shared lock and reads the header. Raises the provider's errors for a
  /// file that can't be opened or is no database, or that another program holds exclusively.
  Pager(const std::filesystem::path& file, std::u16string_view shownPath);
  ~Pager();

  const Header& header() const { return header_; }
  const Layout& layout() const { return *layout_; }
  const std::u16string& shownPath() const { return shownPath_; }
  std::uint32_t pageCount() const { return pageCount_; }

  /// A page's decoded bytes. `from` is where its number was read: a page outside the file is damage
  /// there. Takes the shared lock again after a release; a file that another program holds too long
  /// is an error.
  Page read(PageNumber number, const Location& from);
  /// Reads the pages from `first` to `last` at once, as far as the file has them, unless the first
  /// is cached already. Raises what `read` raises for the first.
  void readRun(PageNumber first, PageNumber last, const Location& from);
  /// Marks a page as no longer needed by a scan. Such pages are evicted first, in the reverse order
  /// of marking, so that a scan of many pages doesn't evict the other cached pages.
  void setScanned(PageNumber number);
  /// Raises damage for a page number outside the file, which a damaged map can lead beyond 32 bits;
  /// `from` is where the number was read.
  [[noreturn]] void raiseOutside(std::uint64_t number, const Location& from) const;

  /// An index page, opened for lookup. It is opened once while the page is cached.
  struct OpenIndexPage {
    Page page;
    IndexPageView view;
  };
  std::shared_ptr<const OpenIndexPage> readIndexPage(PageNumber number, const Location& from);

  /// Takes the exclusive lock; this session must hold none. Raises the errors of a file that is
  /// read-only, locked too long, or deleted or replaced since it was opened; no lock is held then.
  void lockForUpdate();
  /// Releases the lock, if one is held, until the next read. Pages already returned stay valid.
  void release() noexcept;
  /// Drops all cached pages and reads the file's size again: the file may have changed.
  void forget();
  /// Writes a page; one after the last makes the file longer. Only within an update.
  void write(PageNumber number, ByteView page);
  /// Returns when all writes have reached the disk.
  void sync();

 private:
  struct Frame {
    PageNumber number;
    bool recentlyUsed = false;
    bool scanned = false;
    Page page;
    std::shared_ptr<const OpenIndexPage> index;  ///< set once the page was opened as an index page
  };

  void lock();
  std::size_t freeFrame();
  Frame& keep(PageNumber number, ByteView encoded);
  Frame& frameWith(PageNumber number, PageNumber last, const Location& from);

  std::u16string shownPath_;
  bool readOnly_ = false;
  std::unique_ptr<files::ByteFile> file_;
  bool locked_ = false;  ///< shared, or exclusively within an update
  Header header_;
  const Layout* layout_ = nullptr;
  std::uint32_t pageCount_ = 0;
  std::vector<Frame> frames_;
  std::vector<std::uint16_t> frameOf_;  ///< by page number: index in frames_ + 1, 0 for none
  std::vector<std::size_t> scanned_;    ///< frames to evict first, beginning with the last
  std::size_t hand_ = 0;                ///< of the clock that picks the frame to reuse
  Bytes run_;                           ///< pages of the last read, not yet decoded
};

}  // namespace jet
