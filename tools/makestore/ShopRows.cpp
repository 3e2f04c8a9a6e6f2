#include "makestore/ShopRows.h"

#include <algorithm>
#include <random>
#include <stdexcept>

#include "makestore/ShopProducts.h"
#include "platform/jet/format/IndexPage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/TextKey.h"
#include "platform/runtime/Conversion.h"

namespace makestore {
namespace {

/// Every 17th slot of the three levels (63 keys each) is free, if so many slots are to be free.
constexpr int kEarlyFreeStep = 17;
constexpr int kEarlyFreeEnd = 189;
constexpr std::int32_t kFirstRecordNumber = 1001;
constexpr std::int64_t kTenThousandthsPerCent = 100;
constexpr double kFirstSale = 38000;  // in January 2004
constexpr double kOpening = 1.0 / 3;  // eight in the morning

/// A 13-digit article number with its check digit.
std::u16string articleNumber(std::uint32_t random) {
  std::u16string digits = u"50" + runtime::toText(1'000'000'000ULL + random % 1'000'000'000U);
  digits.resize(12, u'0');
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) sum += (digits[i] - u'0') * (i % 2 == 0 ? 1 : 3);
  return digits + static_cast<char16_t>(u'0' + (10 - sum % 10) % 10);
}

std::set<int> freeSlots(const ShopOptions& options) {
  if (options.free) return *options.free;
  const int count = options.slots - options.products;
  if (count < 0) throw std::invalid_argument("more products than slots");
  std::set<int> free;
  const auto open = [&] { return static_cast<int>(free.size()) < count; };
  for (int id = kEarlyFreeStep; id <= std::min(kEarlyFreeEnd, options.slots) && open();
       id += kEarlyFreeStep)
    free.insert(id);
  for (int id = options.slots; open(); --id) free.insert(id);
  return free;
}

std::optional<std::u16string> barcodeOf(Barcodes kind, const ShopProduct& product, int number,
                                        std::uint32_t random) {
  const bool packaged = kind == Barcodes::All || (kind == Barcodes::Some &&
                                                  product.kind == CatalogueProduct::Kind::Packaged);
  if (packaged || (kind == Barcodes::Mixed && number % 4 == 0)) return articleNumber(random);
  if (kind == Barcodes::Mixed && number % 4 == 2) return u"";
  if (kind == Barcodes::Mixed && number % 4 == 3) return u"   ";
  return std::nullopt;
}

/// Fills the slot with a product of the demo shop.
void nameSlot(SlotRow& slot, const ShopOptions& options,
              const std::vector<ShopDepartment>& departments, int number, std::mt19937& random) {
  const ShopProduct product =
      shopProduct(static_cast<std::size_t>(number), options.descriptionLength);
  const std::size_t department =
      product.department +
      kCatalogueDepartments * (static_cast<std::size_t>(number) / kCatalogueProducts);
  slot.name = product.name;
  if (!departments.empty()) slot.department = departments[department % departments.size()].id;
  slot.price = product.cents * kTenThousandthsPerCent;
  slot.barcode = barcodeOf(options.barcodes, product, number, random());
  slot.instruction = product.kind == CatalogueProduct::Kind::Instruction;
  slot.taxable = number % 3 != 0;
  slot.onHand = static_cast<std::int16_t>(random() % 200);
  slot.lastSold = runtime::Date{kFirstSale + random() % 300 + kOpening + random() % 48 / 96.0};
  slot.notes = u"Shelf " + runtime::toText(random() % 40 + 1);
  if (number % 40 == 7)
    for (int line = 0; line < 12; ++line)
      *slot.notes += u". Delivered on weekday " + runtime::toText(random() % 7 + 1);
}

void applyOverrides(SlotRow& slot, const ShopSlot& overrides) {
  slot.name = overrides.name;
  if (overrides.department) slot.department = overrides.department;
  if (overrides.price) slot.price = *overrides.price;
  if (overrides.barcode) slot.barcode = overrides.barcode;
}

void shuffle(std::vector<SlotRow>& slots, std::mt19937& random) {
  for (std::size_t i = slots.size(); i > 1; --i) std::swap(slots[i - 1], slots[random() % i]);
}

std::size_t entrySize(const SlotRow& slot) {
  const std::size_t flag = 1;
  const std::size_t key = slot.name ? jet::textKey(jet::TextOrder::General4, *slot.name).size() : 0;
  return flag + key + jet::kEntryRowSize;
}

std::size_t leafSize(const std::vector<SlotRow>& slots) {
  std::size_t size = 0;
  for (const SlotRow& slot : slots) size += entrySize(slot);
  return size;
}

}  // namespace

std::vector<ShopDepartment> departmentsOf(const ShopOptions& options) {
  if (!options.departments.empty()) return options.departments;
  std::vector<ShopDepartment> departments;
  for (std::size_t i = 0; i < static_cast<std::size_t>(options.departmentCount); ++i)
    departments.push_back({runtime::toText(i + 1), i < kCatalogueDepartments
                                                       ? std::u16string(catalogueDepartment(i))
                                                       : u"Aisle " + runtime::toText(i + 1)});
  return departments;
}

std::vector<SlotRow> slotsOf(const ShopOptions& options) {
  const std::vector<ShopDepartment> departments = departmentsOf(options);
  const std::set<int> free = freeSlots(options);
  std::mt19937 random(options.seed);
  std::vector<SlotRow> slots;
  int number = 0;
  for (int id = 1; id <= options.slots; ++id) {
    SlotRow slot{.id = id, .recordNumber = kFirstRecordNumber + id - 1};
    for (std::uint8_t& byte : slot.guid.bytes) byte = static_cast<std::uint8_t>(random());
    if (options.departmentType == jet::ColumnType::Long) slot.department = u"0";
    if (!free.contains(id)) nameSlot(slot, options, departments, number++, random);
    if (const auto overrides = options.overrides.find(id); overrides != options.overrides.end())
      applyOverrides(slot, overrides->second);
    slots.push_back(std::move(slot));
  }
  if (options.shuffled) shuffle(slots, random);
  return slots;
}

void fillNameLeaf(std::vector<SlotRow>& slots, std::size_t longestName) {
  const std::size_t capacity = jet::kJet4Layout.indexCapacity();
  std::size_t size = leafSize(slots);
  for (std::size_t i = slots.size(); i-- > 0 && size > capacity;) {
    if (!slots[i].name) continue;
    size -= entrySize(slots[i]);
    slots[i] = {.id = slots[i].id,
                .recordNumber = slots[i].recordNumber,
                .department = u"0",
                .guid = slots[i].guid};
    size += entrySize(slots[i]);
  }
  // A letter more in a name adds one byte to its key.
  for (std::size_t before = 0; size < capacity && before != size;) {
    before = size;
    for (std::size_t i = slots.size(); i-- > 0 && size < capacity;) {
      if (!slots[i].name || slots[i].name->empty() || slots[i].name->size() >= longestName)
        continue;
      slots[i].name->push_back(u's');
      ++size;
    }
  }
  if (size != capacity) throw std::invalid_argument("too few slots to fill an index leaf");
}

}  // namespace makestore
