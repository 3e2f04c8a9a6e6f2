#include "platform/jet/format/PropertyBlob.h"

#include <algorithm>

#include "platform/jet/format/TextKey.h"
#include "platform/runtime/CodePage.h"

namespace jet {
namespace {

constexpr std::uint16_t kNameList = 0x80;
constexpr std::size_t kMagicSize = 4;
constexpr std::size_t kBlockHead = 6;
constexpr std::size_t kValueHead = 8;

ByteView magicOf(Version version) {
  static constexpr std::uint8_t kJet3[] = {'K', 'K', 'D', 0};
  static constexpr std::uint8_t kJet4[] = {'M', 'R', '2', 0};
  return version == Version::Jet3 ? ByteView(kJet3) : ByteView(kJet4);
}

std::u16string nameOf(Version version, ByteView bytes) {
  if (version == Version::Jet3)
    return runtime::fromCodePage({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  std::u16string name;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
    name.push_back(static_cast<char16_t>(u16At(bytes, at)));
  return name;
}

Bytes nameBytes(Version version, std::u16string_view name) {
  Bytes bytes;
  if (version == Version::Jet3) {
    const std::string coded = runtime::toCodePage(name);
    bytes.assign(coded.begin(), coded.end());
  } else {
    for (const char16_t unit : name) appendU16(bytes, unit);
  }
  return bytes;
}

/// Reads a blob piece by piece.
class Pieces {
 public:
  Pieces(ByteView bytes, const Location& location) : bytes_(bytes), location_(&location) {}

  bool isEmpty() const { return at_ == bytes_.size(); }
  ByteView take(std::size_t size) {
    if (size > bytes_.size() - at_)
      raiseDamaged(*location_, u"a property list is cut short", {at_, size, bytes_.size()});
    at_ += size;
    return bytes_.subspan(at_ - size, size);
  }
  std::size_t takeU16() { return u16At(take(2), 0); }

 private:
  ByteView bytes_;
  const Location* location_;
  std::size_t at_ = 0;
};

std::vector<std::u16string> decodeNames(Version version, Pieces body) {
  std::vector<std::u16string> names;
  while (!body.isEmpty()) names.push_back(nameOf(version, body.take(body.takeU16())));
  return names;
}

PropertyBlock decodeBlock(Version version, std::uint16_t type, ByteView bytes,
                          const std::vector<std::u16string>& names, const Location& location) {
  PropertyBlock block;
  block.type = type;
  Pieces body(bytes, location);
  const std::size_t head = u32At(body.take(4), 0);
  const std::size_t nameSize = body.takeU16();
  block.name = nameOf(version, body.take(nameSize));
  if (head < kBlockHead + nameSize)
    raiseDamaged(location, u"a property list has a wrong head", {0, kBlockHead + nameSize, head});
  body.take(head - kBlockHead - nameSize);
  while (!body.isEmpty()) {
    const std::size_t size = body.takeU16();
    if (size < kValueHead)
      raiseDamaged(location, u"a property is too short", {0, kValueHead, size});
    Pieces value(body.take(size - 2), location);
    Property property;
    property.definition = value.take(1)[0] != 0;
    property.type = value.take(1)[0];
    const std::size_t name = value.takeU16();
    if (name < names.size()) property.name = names[name];
    const ByteView data = value.take(value.takeU16());
    property.data.assign(data.begin(), data.end());
    block.properties.push_back(std::move(property));
  }
  return block;
}

void appendBlock(Bytes& blob, std::uint16_t type, ByteView body) {
  appendU32(blob, static_cast<std::uint32_t>(kBlockHead + body.size()));
  appendU16(blob, type);
  appendBytes(blob, body);
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
  return property != nullptr ? nameOf(version, property->data) : std::u16string();
}

std::vector<PropertyBlock> decodeProperties(Version version, ByteView blob,
                                            const Location& location) {
  std::vector<PropertyBlock> blocks;
  if (blob.empty()) return blocks;
  Pieces pieces(blob, location);
  if (!std::ranges::equal(pieces.take(kMagicSize), magicOf(version)))
    raiseDamaged(location, u"a property list has a wrong mark");
  std::vector<std::u16string> names;
  while (!pieces.isEmpty()) {
    const std::size_t size = u32At(pieces.take(4), 0);
    const auto type = static_cast<std::uint16_t>(pieces.takeU16());
    if (size < kBlockHead)
      raiseDamaged(location, u"a property list has a wrong length", {0, kBlockHead, size});
    const ByteView body = pieces.take(size - kBlockHead);
    if (type == kNameList)
      names = decodeNames(version, Pieces(body, location));
    else
      blocks.push_back(decodeBlock(version, type, body, names, location));
  }
  return blocks;
}

Bytes encodeProperties(Version version, const std::vector<PropertyBlock>& blocks) {
  std::vector<std::u16string> names;
  Bytes rest;
  for (const PropertyBlock& block : blocks) {
    Bytes body;
    const Bytes name = nameBytes(version, block.name);
    appendU32(body, static_cast<std::uint32_t>(kBlockHead + name.size()));
    appendU16(body, name.size());
    appendBytes(body, name);
    for (const Property& property : block.properties) {
      auto at = std::ranges::find(names, property.name);
      if (at == names.end()) at = names.insert(names.end(), property.name);
      appendU16(body, kValueHead + property.data.size());
      body.push_back(property.definition ? 1 : 0);
      body.push_back(property.type);
      appendU16(body, static_cast<std::size_t>(at - names.begin()));
      appendU16(body, property.data.size());
      appendBytes(body, property.data);
    }
    appendBlock(rest, block.type, body);
  }
  Bytes list;
  for (const std::u16string& name : names) {
    const Bytes bytes = nameBytes(version, name);
    appendU16(list, bytes.size());
    appendBytes(list, bytes);
  }
  Bytes blob;
  appendBytes(blob, magicOf(version));
  appendBlock(blob, kNameList, list);
  appendBytes(blob, rest);
  return blob;
}

}  // namespace jet
