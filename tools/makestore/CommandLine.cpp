#include "makestore/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <optional>

#include "platform/files/FileContent.h"
#include "platform/runtime/CodePage.h"

namespace makestore {
namespace {

constexpr std::string_view kUsage =
    R"(Usage: makestore OUTPUT.mdb [OPTION...]

Writes a new store database and replaces an existing file. Without options: the demo store.
IDS is a list of ids and ranges: 3,7,10-20. TEXT is UTF-8; \N alone stands for null.

  --shape NAME           corner (the default), cafe (other tables and column types) or tight (full
                         pages, moved rows); must come before the other options

  --generation N         of the file format: 3 or 4 (the default)
  --slots N              product slots, with the ids 1 to N
  --products N           named slots; the others are free
  --all-named            no free slot
  --free IDS             the free slots; all others are named
  --missing-stock IDS    slots without a row in tblStock
  --missing-plu IDS      slots without a row in tblPlu
  --moved IDS            slots whose row has moved and is reached through a pointer
  --name ID=TEXT         the name in a slot; repeatable; \N makes it free
  --rows FILE            names and more, one line each: id, name, deptid, price, barcode, separated
                         by tabs; fields after the name that are missing or empty stay as they are
  --departments N        number of departments
  --department ID=TEXT   a department instead of the usual ones; repeatable
  --barcodes KIND        none, some (the default), all or mixed (some null, empty or blank)
  --seed N               seed of all invented values
  --shuffled             rows in a random order in the file

  --price TYPE           currency or double
  --deptid TYPE          long or text
  --flags TYPE           integer, byte, long or boolean
  --description-length N the names' longest length
  --no-description-index the names have no index
  --required             names refuse null (needs a name in all slots)
  --rule COLUMN=TEXT     a validation rule: for table.column a criterion, for a table an expression;
                         repeatable; the text after a | is the message of a refusal
  --no-zero-length       text columns refuse the empty text
  --uncompressed         texts are stored with two bytes a character
  --packed-indexes       index leaves are packed as the engine of the POS packs them: up to 1,300
                         nulls on one
  --reference-maps       usage maps in the form that large files have
  --free-pages N         free pages at the end of the file
  --encoded              all pages but the first are encrypted
  --password TEXT        another password; empty for none

  --help                 prints this
)";

constexpr std::uint32_t kEncodingKey = 0x5A17C3E9;
constexpr int kMostSlots = 2'000'000;
constexpr std::string_view kNull = "\\N";

int number(std::string_view text) {
  int value = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (problem != std::errc() || end != text.data() + text.size() || value < 0 || value > kMostSlots)
    throw UsageError("not a number that can be used here: " + std::string(text));
  return value;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::set<int> idList(std::string_view text) {
  std::set<int> ids;
  for (const std::string_view part : split(text, ',')) {
    const std::size_t dash = part.find('-');
    const int first = number(part.substr(0, dash));
    const int last = dash == std::string_view::npos ? first : number(part.substr(dash + 1));
    for (int id = first; id <= last; ++id) ids.insert(id);
  }
  return ids;
}

std::optional<std::u16string> textOrNull(std::string_view text) {
  if (text == kNull) return std::nullopt;
  return runtime::fromUtf8(text);
}

std::pair<std::string_view, std::string_view> assignment(std::string_view text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string_view::npos) throw UsageError("no = in " + std::string(text));
  return {text.substr(0, sign), text.substr(sign + 1)};
}

ShopRule rule(std::string_view text) {
  const auto [subject, rest] = assignment(text);
  const std::size_t dot = std::min(subject.find('.'), subject.size());
  const std::size_t bar = std::min(rest.find('|'), rest.size());
  return {.table = runtime::fromUtf8(subject.substr(0, dot)),
          .column = runtime::fromUtf8(subject.substr(std::min(dot + 1, subject.size()))),
          .rule = {.expression = runtime::fromUtf8(rest.substr(0, bar)),
                   .text = runtime::fromUtf8(rest.substr(std::min(bar + 1, rest.size())))}};
}

template <class T>
T choice(std::string_view text, const std::map<std::string_view, T>& choices) {
  const auto found = choices.find(text);
  if (found == choices.end()) throw UsageError("not one of the choices: " + std::string(text));
  return found->second;
}

/// A price in ten-thousandths, from a text such as "2.50".
std::int64_t price(std::string_view text) {
  double value = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (problem != std::errc() || end != text.data() + text.size())
    throw UsageError("not a price: " + std::string(text));
  return static_cast<std::int64_t>(value * 10000 + (value < 0 ? -0.5 : 0.5));
}

void readRow(std::string_view line, std::map<int, ShopSlot>& overrides) {
  const std::vector<std::string_view> fields = split(line, '\t');
  if (fields.size() < 2) throw UsageError("a row without a name: " + std::string(line));
  ShopSlot slot{.name = textOrNull(fields[1])};
  if (fields.size() > 2 && !fields[2].empty()) slot.department = runtime::fromUtf8(fields[2]);
  if (fields.size() > 3 && !fields[3].empty()) slot.price = price(fields[3]);
  if (fields.size() > 4 && !fields[4].empty()) slot.barcode = runtime::fromUtf8(fields[4]);
  overrides[number(fields[0])] = std::move(slot);
}

void readRows(std::string_view path, std::map<int, ShopSlot>& overrides) {
  const std::optional<std::string> text = files::readContent(path);
  if (!text) throw UsageError("no such file: " + std::string(path));
  for (std::string_view line : split(*text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) readRow(line, overrides);
  }
}

ShopOptions shape(std::string_view name) {
  return choice<std::function<ShopOptions()>>(
      name, {{"corner", [] { return ShopOptions(); }}, {"cafe", cafeShop}, {"tight", tightShop}})();
}

/// Applies a command-line option that has a value.
using Setter = std::function<void(ShopOptions&, std::string_view)>;
/// Applies a command-line option that has no value.
using Switch = std::function<void(ShopOptions&)>;

const std::map<std::string_view, Setter>& setters() {
  using jet::ColumnType;
  static const std::map<std::string_view, Setter> all{
      {"--shape", [](ShopOptions& options, auto text) { options = shape(text); }},
      {"--generation",
       [](ShopOptions& options, auto text) {
         options.version =
             choice<jet::Version>(text, {{"3", jet::Version::Jet3}, {"4", jet::Version::Jet4}});
       }},
      {"--slots", [](ShopOptions& options, auto text) { options.slots = number(text); }},
      {"--products",
       [](ShopOptions& options, auto text) {
         options.products = number(text);
         options.free.reset();
       }},
      {"--free", [](ShopOptions& options, auto text) { options.free = idList(text); }},
      {"--missing-stock",
       [](ShopOptions& options, auto text) { options.missingStock = idList(text); }},
      {"--missing-plu", [](ShopOptions& options, auto text) { options.missingPlu = idList(text); }},
      {"--moved", [](ShopOptions& options, auto text) { options.moved = idList(text); }},
      {"--name",
       [](ShopOptions& options, auto text) {
         const auto [id, name] = assignment(text);
         options.overrides[number(id)] = {.name = textOrNull(name)};
       }},
      {"--rows", [](ShopOptions& options, auto text) { readRows(text, options.overrides); }},
      {"--departments",
       [](ShopOptions& options, auto text) { options.departmentCount = number(text); }},
      {"--department",
       [](ShopOptions& options, auto text) {
         const auto [id, name] = assignment(text);
         options.departments.push_back({runtime::fromUtf8(id), textOrNull(name)});
       }},
      {"--barcodes",
       [](ShopOptions& options, auto text) {
         options.barcodes = choice<Barcodes>(text, {{"none", Barcodes::None},
                                                    {"some", Barcodes::Some},
                                                    {"all", Barcodes::All},
                                                    {"mixed", Barcodes::Mixed}});
       }},
      {"--seed", [](ShopOptions& options,
                    auto text) { options.seed = static_cast<std::uint32_t>(number(text)); }},
      {"--price",
       [](ShopOptions& options, auto text) {
         options.priceType = choice<ColumnType>(
             text, {{"currency", ColumnType::Currency}, {"double", ColumnType::Double}});
       }},
      {"--deptid",
       [](ShopOptions& options, auto text) {
         options.departmentType =
             choice<ColumnType>(text, {{"long", ColumnType::Long}, {"text", ColumnType::Text}});
       }},
      {"--flags",
       [](ShopOptions& options, auto text) {
         options.flagType = choice<ColumnType>(text, {{"integer", ColumnType::Integer},
                                                      {"byte", ColumnType::Byte},
                                                      {"long", ColumnType::Long},
                                                      {"boolean", ColumnType::Boolean}});
       }},
      {"--description-length",
       [](ShopOptions& options, auto text) {
         options.descriptionLength = static_cast<std::size_t>(number(text));
       }},
      {"--rule", [](ShopOptions& options, auto text) { options.rules.push_back(rule(text)); }},
      {"--free-pages",
       [](ShopOptions& options, auto text) {
         options.freePages = static_cast<std::size_t>(number(text));
       }},
      {"--password",
       [](ShopOptions& options, auto text) { options.password = runtime::fromUtf8(text); }},
  };
  return all;
}

const std::map<std::string_view, Switch>& switches() {
  static const std::map<std::string_view, Switch> all{
      {"--all-named", [](ShopOptions& options) { options.free.emplace(); }},
      {"--shuffled", [](ShopOptions& options) { options.shuffled = true; }},
      {"--no-description-index", [](ShopOptions& options) { options.descriptionIndex = false; }},
      {"--required", [](ShopOptions& options) { options.descriptionRequired = true; }},
      {"--no-zero-length", [](ShopOptions& options) { options.zeroLength = false; }},
      {"--uncompressed", [](ShopOptions& options) { options.compressed = false; }},
      {"--packed-indexes", [](ShopOptions& options) { options.packedIndexes = true; }},
      {"--reference-maps", [](ShopOptions& options) { options.referenceMaps = true; }},
      {"--encoded", [](ShopOptions& options) { options.encodingKey = kEncodingKey; }},
  };
  return all;
}

}  // namespace

std::string_view usage() {
  return kUsage;
}

Request parseCommandLine(const std::vector<std::string>& arguments) {
  Request request;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (word == "--help") {
      request.help = true;
    } else if (const auto found = setters().find(word); found != setters().end()) {
      if (++i == arguments.size()) throw UsageError(word + " needs a value");
      found->second(request.options, arguments[i]);
    } else if (const auto plain = switches().find(word); plain != switches().end()) {
      plain->second(request.options);
    } else if (word.starts_with("--") || !request.output.empty()) {
      throw UsageError("unknown: " + word);
    } else {
      request.output = word;
    }
  }
  if (request.output.empty() && !request.help) throw UsageError("no file is named");
  return request;
}

}  // namespace makestore
