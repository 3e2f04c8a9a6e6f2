#include <gtest/gtest.h>

#include "support/Monkey.h"

namespace {

class LargeMonkey final : public support::Monkey {
 public:
  LargeMonkey() : Monkey("frmMainBig", 108) {
    files_["Posconfig.ini"] = "[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=1\r\n";
    shop_.folder.write("Posdata/Posconfig.ini", files_["Posconfig.ini"]);
    shop_.slotCount = 60;
    shop_.names[40000] = u"Zebra";  // an id beyond 16 bits, which can't be assigned to a key
    shop_.names[7] = u"Apple, " + std::u16string(50, u'x');
  }

 private:
  std::string layoutFile() const override { return "FastMovers.txt"; }

  int resetModel() override { return applyLayout(false); }

  std::u16string entryOf(std::u16string_view description, std::int64_t id) const override {
    std::u16string text = support::wide(std::to_string(id));
    text.resize(10, u' ');
    return text.append(description);
  }

  Item split(const std::u16string& entry) const override {
    // An empty text comes from a double click with nothing selected, or from a drop.
    const auto id = support::number(entry.substr(0, 10));
    if (!id) return {.error = 13};
    if (*id > 32767) return {.error = 6};
    if (entry.size() < 10) return {.error = 5};
    return {.description = entry.substr(10), .id = std::to_string(*id)};
  }
};

}  // namespace

TEST(LargeMonkey, AThousandRandomActionsLeaveTheStateThatTheModelPredicts) {
  LargeMonkey().play(support::monkeySeed(), 1000);
}
