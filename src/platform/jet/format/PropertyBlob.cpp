#include "platform/jet/format/PropertyBlob.h"

#include <algorithm>
#include <array>

#include "platform/jet/format/StoredText.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
namespace {

constexpr std::array<std::uint8_t, 4> kJet3Magic{'K', 'K', 'D', 0};
constexpr std::array<std::uint8_t, 4> kJet4Magic{'M', 'R', '2', 0};

// Head of a block.
constexpr std::size_t kBlockSize = 0;  ///< u32, of the block with its head
constexpr std::size_t kBlockType = 4;  ///< u16: kNameList, kObject or kColumn
constexpr std::size_t kBlockHead = 6;
constexpr std::uint16_t kNameList = 0x80;
/// In the list of names: u16, size of the name that follows.
constexpr std::size_t kListedNameSize = 2;

// In the other blocks: head of the owner's name.
constexpr std::size_t kOwnerSize = 0;      ///< u32, of this head and the name
constexpr std::size_t kOwnerNameSize = 4;  ///< u16
constexpr std::size_t kOwnerHead = 6;

// Head of a property, which its data follow.
constexpr std::size_t kPropertySize = 0;        ///< u16, of the head and the data
constexpr std::size_t kPropertyDefinition = 2;  ///< u8, not 0: part of the data definition
constexpr std::size_t kPropertyType = 3;        ///< u8, a column type
constexpr std::size_t kPropertyName = 4;        ///< u16, index in the list of names
constexpr std::size_t kPropertyDataSize = 6;    ///< u16
constexpr std::size_t kPropertyHead = 8;

ByteView magicOf(Version version) {
  return version == Version::Jet3 ? kJet3Magic : kJet4Magic;
}

/// Reads consecutive fields of a blob.
class BlobReader {
 public:
  BlobReader(ByteView bytes, const Location& location) : bytes_(bytes), location_(&location) {}

  bool isEmpty() const { return at_ == bytes_.size(); }
  ByteView take(std::size_t size) {
    if (size > bytes_.size() - at_)
      raiseDamaged(*location_, u"a property list is cut short",
                   {.offset = at_, .size = size, .available = bytes_.size()});
    at_ += size;
    return bytes_.subspan(at_ - size, size);
  }

 private:
  ByteView bytes_;
  const Location* location_;
  std::size_t at_ = 0;
};

std::vector<std::u16string> decodeNames(Version version, BlobReader body) {
  std::vector<std::u16string> names;
  while (!body.isEmpty())
    names.push_back(decodePlainText(version, body.take(u16At(body.take(kListedNameSize), 0))));
  return names;
}

PropertyBlock decodeBlock(Version version, std::uint16_t type, ByteView bytes,
                          const std::vector<std::u16string>& names, const Location& location) {
  PropertyBlock block;
  block.type = type;
  BlobReader body(bytes, location);
  const ByteView owner = body.take(kOwnerHead);
  const std::size_t ownerSize = u32At(owner, kOwnerSize);
  const std::size_t nameSize = u16At(owner, kOwnerNameSize);
  block.name = decodePlainText(version, body.take(nameSize));
  if (ownerSize < kOwnerHead + nameSize)
    raiseDamaged(location, u"a property list has a wrong head",
                 {.offset = kOwnerSize, .size = kOwnerHead + nameSize, .available = ownerSize});
  body.take(ownerSize - kOwnerHead - nameSize);
  while (!body.isEmpty()) {
    const ByteView head = body.take(kPropertyHead);
    const std::size_t size = u16At(head, kPropertySize);
    if (size < kPropertyHead)
      raiseDamaged(location, u"a property is too short",
                   {.offset = kPropertySize, .size = kPropertyHead, .available = size});
    BlobReader value(body.take(size - kPropertyHead), location);
    Property property;
    property.definition = head[kPropertyDefinition] != 0;
    property.type = head[kPropertyType];
    const std::size_t name = u16At(head, kPropertyName);
    if (name < names.size()) property.name = names[name];
    const ByteView data = value.take(u16At(head, kPropertyDataSize));
    property.data.assign(data.begin(), data.end());
    block.properties.push_back(std::move(property));
  }
  return block;
}

void appendBlock(Bytes& blob, std::uint16_t type, ByteView body) {
  Bytes head(kBlockHead);
  putU32(head, kBlockSize, static_cast<std::uint32_t>(kBlockHead + body.size()));
  putU16(head, kBlockType, type);
  appendBytes(blob, head);
  appendBytes(blob, body);
}

Bytes encodeOwner(ByteView name) {
  Bytes owner(kOwnerHead);
  putU32(owner, kOwnerSize, static_cast<std::uint32_t>(kOwnerHead + name.size()));
  putU16(owner, kOwnerNameSize, name.size());
  appendBytes(owner, name);
  return owner;
}

void appendProperty(Bytes& body, const Property& property, std::size_t name) {
  Bytes head(kPropertyHead);
  putU16(head, kPropertySize, kPropertyHead + property.data.size());
  head[kPropertyDefinition] = property.definition ? 1 : 0;
  head[kPropertyType] = property.type;
  putU16(head, kPropertyName, name);
  putU16(head, kPropertyDataSize, property.data.size());
  appendBytes(body, head);
  appendBytes(body, property.data);
}

}  // namespace

const Property* PropertyBlock::find(std::u16string_view wanted) const {
  const auto found = std::ranges::find_if(
      properties, [&](const Property& property) { return sameName(property.name, wanted); });
  return found != properties.end() ? &*found : nullptr;
}

bool PropertyBlock::flag(std::u16string_view wanted) const {
  const Property* property = find(wanted);
  return property != nullptr && !property->data.empty() && property->data[0] != 0;
}

std::u16string PropertyBlock::text(Version version, std::u16string_view wanted) const {
  const Property* property = find(wanted);
  return property != nullptr ? decodePlainText(version, property->data) : std::u16string();
}

std::vector<PropertyBlock> decodeProperties(Version version, ByteView blob,
                                            const Location& location) {
  std::vector<PropertyBlock> blocks;
  if (blob.empty()) return blocks;
  BlobReader pieces(blob, location);
  if (!std::ranges::equal(pieces.take(kJet4Magic.size()), magicOf(version)))
    raiseDamaged(location, u"a property list has a wrong mark");
  std::vector<std::u16string> names;
  while (!pieces.isEmpty()) {
    const ByteView head = pieces.take(kBlockHead);
    const std::size_t size = u32At(head, kBlockSize);
    const std::uint16_t type = u16At(head, kBlockType);
    if (size < kBlockHead)
      raiseDamaged(location, u"a property list has a wrong length",
                   {.offset = kBlockSize, .size = kBlockHead, .available = size});
    const ByteView body = pieces.take(size - kBlockHead);
    if (type == kNameList)
      names = decodeNames(version, BlobReader(body, location));
    else
      blocks.push_back(decodeBlock(version, type, body, names, location));
  }
  return blocks;
}

Bytes encodeProperties(Version version, const std::vector<PropertyBlock>& blocks) {
  std::vector<std::u16string> names;
  Bytes rest;
  for (const PropertyBlock& block : blocks) {
    Bytes body = encodeOwner(encodePlainText(version, block.name));
    for (const Property& property : block.properties) {
      auto at = std::ranges::find(names, property.name);
      if (at == names.end()) at = names.insert(names.end(), property.name);
      appendProperty(body, property, static_cast<std::size_t>(at - names.begin()));
    }
    appendBlock(rest, block.type, body);
  }
  Bytes list;
  for (const std::u16string& name : names) {
    const Bytes bytes = encodePlainText(version, name);
    Bytes size(kListedNameSize);
    putU16(size, 0, bytes.size());
    appendBytes(list, size);
    appendBytes(list, bytes);
  }
  Bytes blob;
  appendBytes(blob, magicOf(version));
  appendBlock(blob, kNameList, list);
  appendBytes(blob, rest);
  return blob;
}

}  // namespace jet
