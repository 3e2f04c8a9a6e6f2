#include "platform/jet/format/Header.h"

#include <array>
#include <bit>
#include <cmath>
#include <string_view>

#include "platform/jet/format/PageCipher.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/StoredText.h"

namespace jet {
namespace {

constexpr std::string_view kMagic = "Standard Jet DB";
constexpr std::size_t kMagicAt = 0x04;
constexpr std::size_t kVersionAt = 0x14;
constexpr std::uint8_t kJet3Version = 0;
constexpr std::uint8_t kJet4Version = 1;
constexpr std::size_t kMaskedAt = 0x18;
constexpr std::size_t kJet3MaskedSize = 126;
constexpr std::size_t kJet4MaskedSize = 128;
constexpr std::size_t kPointersAt = 0x18;
constexpr std::size_t kJet3LanguageAt = 0x3A;
constexpr std::size_t kCodePageAt = 0x3C;
constexpr std::size_t kEncodingKeyAt = 0x3E;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kJet3PasswordSize = 20;
constexpr std::size_t kJet4PasswordSize = 40;
constexpr std::size_t kJet4LanguageAt = 0x6E;
constexpr std::size_t kJet4SortVersionAt = 0x71;
constexpr std::size_t kCreationDateAt = 0x72;
constexpr std::size_t kJet4MarkAt = 0x98;
constexpr std::uint32_t kJet4Mark = 0x0654;
constexpr std::size_t kJet4TextAt = 0x9C;
constexpr std::string_view kJet4Text = "4.0";
constexpr std::size_t kJet3CommitBytesAt = 0x600;
constexpr std::size_t kJet4CommitBytesAt = 0xE00;
/// One pair of commit bytes for each possible user, in its state before any write.
constexpr std::array<std::uint8_t, 2> kCommitPair{0, 1};
/// The pointers of page 0: to the two global maps, then to the definitions of the four system
/// tables.
constexpr std::array<std::uint32_t, 6> kPointers{RowPointer{kGlobalMapPage, SlotNumber(0)}.pack(),
                                                 RowPointer{kGlobalMapPage, SlotNumber(1)}.pack(),
                                                 kObjectsPage.value(),
                                                 kAcesPage.value(),
                                                 kQueriesPage.value(),
                                                 kRelationshipsPage.value()};
constexpr std::array<std::uint8_t, 4> kMaskKey{0xC7, 0xDA, 0x39, 0x6B};

std::size_t maskedSize(Version version) {
  return version == Version::Jet3 ? kJet3MaskedSize : kJet4MaskedSize;
}

void mask(Version version, ByteSpan page) {
  Rc4(kMaskKey).apply(page.subspan(kMaskedAt, maskedSize(version)));
}

/// The Jet 4 password is masked by the number of days in the creation date, without its fraction.
void maskPassword(double creationDate, ByteSpan password) {
  const bool representable = std::abs(creationDate) < 2147483648.0;
  const auto days = representable ? static_cast<std::int32_t>(creationDate) : 0;
  std::array<std::uint8_t, 4> key{};
  putU32(key, 0, std::bit_cast<std::uint32_t>(days));
  for (std::size_t i = 0; i < password.size(); ++i) password[i] ^= key[i % key.size()];
}

ByteSpan passwordField(Version version, ByteSpan page) {
  return page.subspan(kPasswordAt,
                      version == Version::Jet3 ? kJet3PasswordSize : kJet4PasswordSize);
}

std::u16string decodePassword(Version version, double creationDate, ByteSpan page) {
  const ByteSpan field = passwordField(version, page);
  if (version == Version::Jet4) maskPassword(creationDate, field);
  const std::u16string padded = decodePlainText(version, field);
  return padded.substr(0, padded.find(u'\0'));
}

void encodePassword(const Header& header, ByteSpan page) {
  const ByteSpan field = passwordField(header.version, page);
  const std::u16string_view password =
      std::u16string_view(header.password).substr(0, Header::kLongestPassword);
  putBytes(field, 0, encodePlainText(header.version, password));
  if (header.version == Version::Jet4) maskPassword(header.creationDate, field);
}

}  // namespace

std::optional<Header> Header::decode(ByteView front) {
  if (front.size() < kDecodedSize) return std::nullopt;
  const std::string_view magic(reinterpret_cast<const char*>(front.data()) + kMagicAt,
                               kMagic.size());
  if (front[PageHead::kType] != static_cast<std::uint8_t>(PageType::Header) || magic != kMagic ||
      front[kVersionAt] > kJet4Version)
    return std::nullopt;
  Header header;
  header.version = front[kVersionAt] == kJet3Version ? Version::Jet3 : Version::Jet4;
  const bool jet3 = header.version == Version::Jet3;
  Bytes page(front.begin(), front.begin() + kDecodedSize);
  mask(header.version, page);
  header.codePage = u16At(page, kCodePageAt);
  header.encodingKey = u32At(page, kEncodingKeyAt);
  header.sortLanguage = u16At(page, jet3 ? kJet3LanguageAt : kJet4LanguageAt);
  header.sortVersion = jet3 ? 0 : page[kJet4SortVersionAt];
  header.creationDate = std::bit_cast<double>(u64At(page, kCreationDateAt));
  header.password = decodePassword(header.version, header.creationDate, page);
  return header;
}

Bytes Header::encode() const {
  const bool jet3 = version == Version::Jet3;
  Bytes page(layoutOf(version).pageSize);
  page[PageHead::kMark] = PageHead::kLive;
  putBytes(page, kMagicAt, {reinterpret_cast<const std::uint8_t*>(kMagic.data()), kMagic.size()});
  page[kVersionAt] = jet3 ? kJet3Version : kJet4Version;
  for (std::size_t i = 0; i < kPointers.size(); ++i)
    putU32(page, kPointersAt + sizeof kPointers[i] * i, kPointers[i]);
  putU16(page, kCodePageAt, codePage);
  putU32(page, kEncodingKeyAt, encodingKey);
  putU64(page, kCreationDateAt, std::bit_cast<std::uint64_t>(creationDate));
  encodePassword(*this, page);
  putU16(page, jet3 ? kJet3LanguageAt : kJet4LanguageAt, sortLanguage);
  if (!jet3) {
    page[kJet4SortVersionAt] = sortVersion;
    putU32(page, kJet4MarkAt, kJet4Mark);
    putBytes(page, kJet4TextAt,
             {reinterpret_cast<const std::uint8_t*>(kJet4Text.data()), kJet4Text.size()});
  }
  for (std::size_t at = jet3 ? kJet3CommitBytesAt : kJet4CommitBytesAt; at < page.size();
       at += kCommitPair.size())
    putBytes(page, at, kCommitPair);
  mask(version, page);
  return page;
}

}  // namespace jet
