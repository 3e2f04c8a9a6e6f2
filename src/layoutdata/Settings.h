#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Every setting of the program, each defined once. A default is used only for the read: it is
/// never written back. No value is cached.
namespace layoutdata::settings {

/// The path of the touch screen's layout settings, below the program folder.
std::u16string touchFile();

inline constexpr std::u16string_view kSettings = u"SETTINGS";
/// Exactly "0": the free layout view. Any other text: the autofill view.
inline constexpr std::u16string_view kAutofill = u"AUTOFILL";
inline constexpr std::u16string_view kAutofillDefault = u"0";
/// Corner of the key block at which item 1 is placed. Written for other programs, never read here.
inline constexpr std::u16string_view kItemOne = u"ItemOne";
inline constexpr std::u16string_view kItemOneBottomLeft = u"BL";
inline constexpr std::u16string_view kItemOneTopLeft = u"TL";
/// Followed by the level: that level's display name.
inline constexpr std::u16string_view kScreen = u"SCREEN";
inline constexpr std::u16string_view kScreenDefault{};

/// The key block of the autofill view; lengths in twips.
inline constexpr std::u16string_view kButtons = u"BUTTONS_BL";
struct NumberSetting {
  std::u16string_view key;
  std::int32_t defaultValue;
};
inline constexpr NumberSetting kStartLeft{u"StartLeft", 0};
inline constexpr NumberSetting kStartTop{u"StartTop", 8640};
inline constexpr NumberSetting kRows{u"rows", 9};
inline constexpr NumberSetting kSpace{u"Space", 30};
inline constexpr NumberSetting kButtonHeight{u"ButtonHeight", 1050};
inline constexpr NumberSetting kButtonWidth{u"ButtonWidth", 1320};

/// The path of the POS's own configuration, of which one key is read and none is written.
std::u16string posFile();
inline constexpr std::u16string_view kGeneral = u"GENERAL";
/// Exactly "0": the levelled editor. Any other text: the large one.
inline constexpr std::u16string_view kLoadLarge = u"LOAD_FASTMOVERS_LARGE";
inline constexpr std::u16string_view kLoadLargeDefault = u"0";

/// Read with an empty file name, so the default always comes back.
inline constexpr std::u16string_view kDatabase = u"DATABASE";
inline constexpr std::u16string_view kDbSource = u"dbsource";

/// Entries of the per-user settings store. The two spellings of application and section name the
/// same branch; each call keeps its own.
struct SettingsEntry {
  std::u16string_view application, section, key;
};
/// Folder name of this store below "\Stores\".
inline constexpr SettingsEntry kStoreName{u"tavenor", u"comms", u"storename"};
/// Whether the item list leaves out items with barcodes.
inline constexpr SettingsEntry kHideBarcode{u"TAVENOR", u"KEYSTRAND", u"HIDE_BARCODE"};
inline constexpr std::u16string_view kHideBarcodeDefault = u"0";
/// Commands to the communications program.
inline constexpr SettingsEntry kUpdate{u"TAVENOR", u"COMMS", u"UPDATE"};
inline constexpr std::u16string_view kUpdateProgramData = u"PROGRAMDATA";
inline constexpr SettingsEntry kFormToOpen{u"TAVENOR", u"COMMS", u"FORMTOOPEN"};
inline constexpr std::u16string_view kFormToOpenUpdatePos = u"UPDATEPOS";

}  // namespace layoutdata::settings
