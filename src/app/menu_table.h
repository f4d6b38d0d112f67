// The menu items of the main window that do something: the form or command behind each, and
// whether it needs an open project. An item without a row is not in this version of the program.
#pragma once

#include <span>
#include <string_view>

class QWidget;

namespace orvak::app {

class MdiMain;

/// The menus of the menu bar, in their order (Graphics is a menu-bar entry without items).
enum class MainMenu {
    Project = 0,
    Cielling,
    Beam,
    Columns,
    Foundation,
    Graphics,
    Quantities,
    Setting,
    Reports,
    Help,
};
inline constexpr int kMainMenuCount = 10;

/// Item indexes of the Project menu (0-based, separators counted).
namespace project_item {
inline constexpr int kProjectsDir = 0;
inline constexpr int kProjectData = 2;
inline constexpr int kArchive = 3;
inline constexpr int kNew = 5;
inline constexpr int kOpen = 6;
inline constexpr int kCopy = 7;
inline constexpr int kDelete = 8;
inline constexpr int kExit = 10;
} // namespace project_item

/// Item indexes of the Beam\Rip menu.
namespace beam_item {
inline constexpr int kSettings = 0;
inline constexpr int kAnalysisAndDesign = 4;
inline constexpr int kLongTimeDeflection = 5;
} // namespace beam_item

/// Item indexes of the Columns menu.
namespace columns_item {
inline constexpr int kSettings = 0;
inline constexpr int kColumnsData = 1;
inline constexpr int kGroups = 3;
} // namespace columns_item

/// Item indexes of the Foundation menu.
namespace foundation_item {
inline constexpr int kSettings = 0;
inline constexpr int kNecksData = 1;
inline constexpr int kNeckGroups = 2;
inline constexpr int kFootingGroups = 4;
} // namespace foundation_item

/// Item indexes of the Reports menu.
namespace reports_item {
inline constexpr int kBeamRip = 0;
inline constexpr int kColumnGroups = 1;
inline constexpr int kFootingColumnGroups = 2;
inline constexpr int kFootingGroups = 3;
} // namespace reports_item

/// Item indexes of the Cielling (floors) menu.
namespace cielling_item {
inline constexpr int kNew = 0;
inline constexpr int kSelect = 1;
inline constexpr int kData = 2;
inline constexpr int kThickness = 4;
} // namespace cielling_item

/// Item indexes of the Quantities menu.
namespace quantities_item {
inline constexpr int kSteelUpdate = 0;
inline constexpr int kSteelPrint = 1;
} // namespace quantities_item

/// Item indexes of the Setting menu.
namespace setting_item {
inline constexpr int kSoftware = 0;
inline constexpr int kPrinter = 1;
inline constexpr int kPlotter = 2;
inline constexpr int kAreasForBars = 4;
inline constexpr int kAreasForSpacing = 5;
inline constexpr int kFilling = 6;
inline constexpr int kNetworkIron = 7;
} // namespace setting_item

/// Index of the menu-bar entry of a menu without items (Graphics) in its rows.
inline constexpr int kMenuBarEntry = 0;
/// Sub-item index of an item that has no sub-menu.
inline constexpr int kNoSubItem = -1;

/// What an item does: a form item returns its new form, which the main window shows as a
/// child window; a command item does its work and returns nullptr.
using MenuAction = QWidget* (*)(MdiMain& frame);

struct MenuItem {
    MainMenu menu;
    int item; ///< index in the menu's control array, separators counted
    /// Object name of the form the item opens: while a window of that name is open the item
    /// brings it forward instead of opening another. Empty for a command.
    std::string_view objectName;
    bool needsProject; ///< disabled while no project is open
    MenuAction open;
    int subItem = kNoSubItem; ///< index in the item's sub-menu (Setting > plotter)
};

/// Every item of the menu bar that is in this version, once.
std::span<const MenuItem> menuTable();

} // namespace orvak::app
