#include "platform/jet/format/PageCipher.h"

#include <utility>

#include "platform/jet/format/Layout.h"

namespace jet {

Rc4::Rc4(ByteView key) {
  for (std::size_t i = 0; i < box_.size(); ++i) box_[i] = static_cast<std::uint8_t>(i);
  std::uint8_t j = 0;
  for (std::size_t i = 0; i < box_.size(); ++i) {
    j = static_cast<std::uint8_t>(j + box_[i] + key[i % key.size()]);
    std::swap(box_[i], box_[j]);
  }
}

void Rc4::apply(ByteSpan bytes) {
  for (std::uint8_t& byte : bytes) {
    i_ = static_cast<std::uint8_t>(i_ + 1);
    j_ = static_cast<std::uint8_t>(j_ + box_[i_]);
    std::swap(box_[i_], box_[j_]);
    byte ^= box_[static_cast<std::uint8_t>(box_[i_] + box_[j_])];
  }
}

void cipherPage(std::uint32_t encodingKey, PageNumber page, ByteSpan bytes) {
  if (encodingKey == 0 || page == kHeaderPage) return;
  std::array<std::uint8_t, sizeof encodingKey> key{};
  putU32(key, 0, encodingKey ^ page.value());
  Rc4(key).apply(bytes);
}

}  // namespace jet
