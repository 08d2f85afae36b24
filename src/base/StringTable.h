#pragma once

#include <string_view>

namespace kestrune {

/// The text of that number, UTF-8; empty for an unknown one. Texts for the user stand here and nowhere else,
/// low in the house so that the core can say them too. Command prompts stand with their commands.
std::string_view StringText(int nId);

// Numbers of texts that the code refers to by name. Those from 60001 on are this program's own.
inline constexpr int IDS_OLE_INIT_FAILED = 100;
inline constexpr int IDS_PRODUCT_NAME = 130;
inline constexpr int IDS_NO_TEXTURES = 1127;
inline constexpr int IDS_BAD_FORMAT = 60001;
inline constexpr int IDS_LOAD_ERROR = 60002;
inline constexpr int IDS_NUMBER_OUT_OF_RANGE = 60003;
inline constexpr int IDS_NUMBER_EXPECTED = 60004;
// Reading and writing files.
inline constexpr int IDS_CANNOT_READ = 60150;
inline constexpr int IDS_CANNOT_CREATE = 60151;
inline constexpr int IDS_CANNOT_WRITE = 60152;
inline constexpr int IDS_CANNOT_KEEP = 60153;
inline constexpr int IDS_REASON_MISSING = 60154;
inline constexpr int IDS_REASON_DENIED = 60155;
inline constexpr int IDS_REASON_READONLY = 60156;
inline constexpr int IDS_REASON_FULL = 60157;
inline constexpr int IDS_REASON_TOOBIG = 60158;
inline constexpr int IDS_REASON_FOLDER = 60159;
inline constexpr int IDS_REASON_DEVICE = 60160;
inline constexpr int IDS_REASON_NAME = 60161;
// The frame: bars, hints, questions at the end, the about box.
inline constexpr int IDS_BOX_CLOSE = 60250;
inline constexpr int IDS_HINT_DROP = 60251;
inline constexpr int IDS_HINT_KEYS = 60252;
inline constexpr int IDS_ZOOM_LABEL = 60253;
inline constexpr int IDS_ZOOM_TIP = 60254;
inline constexpr int IDS_FRAME_FOLLOWS_ZOOM = 60255;
inline constexpr int IDS_FRAME_FOLLOWS_ZOOM_TIP = 60256;
inline constexpr int IDS_ASK_SAVE = 60257;
inline constexpr int IDS_SETTINGS_NOT_SAVED = 60258;
inline constexpr int IDS_SETTINGS_CORRUPT = 60259;
inline constexpr int IDS_COMMAND_OUT_OF_MEMORY = 60260;
inline constexpr int IDS_COMMAND_FAILED = 60261;
inline constexpr int IDS_NEW_DOCUMENT = 60262;
inline constexpr int IDS_ABOUT_TITLE = 60263;
inline constexpr int IDS_ABOUT_WHAT = 60264;
inline constexpr int IDS_ABOUT_CREDITS = 60265;
inline constexpr int IDS_OUT_OF_MEMORY = 60200;
inline constexpr int IDS_SAVE_ERROR = 60201;
inline constexpr int IDS_SAVED_AS_JPEG = 60202;
inline constexpr int IDS_OLD_FILE_KEPT = 60203;


inline constexpr int IDS_PRINT_FAILED = 60350;
// Buttons of every box and dialog, and the dialogs that create, open, save and export.
inline constexpr int IDS_BUTTON_OK = 60400;
inline constexpr int IDS_BUTTON_CANCEL = 60401;
inline constexpr int IDS_BUTTON_YES = 60402;
inline constexpr int IDS_BUTTON_NO = 60403;
inline constexpr int IDS_BUTTON_CLOSE = 60404;
inline constexpr int IDS_UNIT_PIXEL = 60405;
inline constexpr int IDS_UNIT_CENTIMETER = 60406;
inline constexpr int IDS_UNIT_MILLIMETER = 60407;
inline constexpr int IDS_UNIT_INCH = 60408;
inline constexpr int IDS_NEW_IMAGE_TITLE = 60409;
inline constexpr int IDS_NEW_WIDTH = 60410;
inline constexpr int IDS_NEW_WIDTH_TIP = 60411;
inline constexpr int IDS_NEW_HEIGHT = 60412;
inline constexpr int IDS_NEW_HEIGHT_TIP = 60413;
inline constexpr int IDS_NEW_UNIT = 60414;
inline constexpr int IDS_NEW_UNIT_TIP = 60415;
inline constexpr int IDS_NEW_KIND = 60416;
inline constexpr int IDS_NEW_KIND_TIP = 60417;
inline constexpr int IDS_NEW_COLOR = 60418;
inline constexpr int IDS_NEW_COLOR_TIP = 60419;
inline constexpr int IDS_NEW_MEMORY = 60420;
inline constexpr int IDS_FILL_WHITE = 60421;
inline constexpr int IDS_FILL_BLACK = 60422;
inline constexpr int IDS_FILL_BACKGROUND = 60423;
inline constexpr int IDS_COLOR_BITMAP = 60424;
inline constexpr int IDS_COLOR_GRAY = 60425;
inline constexpr int IDS_COLOR_RGB = 60426;
inline constexpr int IDS_FILTER_ALL = 60427;
inline constexpr int IDS_OPEN_TITLE = 60428;
inline constexpr int IDS_OPEN_BUTTON = 60429;
inline constexpr int IDS_SAVE_BUTTON = 60430;
inline constexpr int IDS_EXPORT_BUTTON = 60431;
inline constexpr int IDS_SAVE_TITLE = 60432;
inline constexpr int IDS_SAVEAS_TITLE = 60433;
inline constexpr int IDS_EXPORT_TITLE = 60434;
inline constexpr int IDS_FILE_NAME = 60435;
inline constexpr int IDS_FILE_TYPE = 60436;
inline constexpr int IDS_FILE_LOOK_IN = 60437;
inline constexpr int IDS_PREVIEW_NONE = 60438;
inline constexpr int IDS_PREVIEW_BUSY = 60439;
inline constexpr int IDS_PREVIEW_FAILED = 60440;
inline constexpr int IDS_PREVIEW_TOO_BIG = 60441;
inline constexpr int IDS_PREVIEW_NAME = 60442;
inline constexpr int IDS_INFO_BUTTON = 60443;
inline constexpr int IDS_INFO_BUTTON_TIP = 60444;
inline constexpr int IDS_INFO_TITLE = 60445;
inline constexpr int IDS_INFO_PATH = 60446;
inline constexpr int IDS_INFO_BITS = 60447;
inline constexpr int IDS_INFO_WIDTH = 60448;
inline constexpr int IDS_INFO_HEIGHT = 60449;
inline constexpr int IDS_INFO_XRES = 60450;
inline constexpr int IDS_INFO_YRES = 60451;
inline constexpr int IDS_INFO_BITS_VALUE = 60452;
inline constexpr int IDS_INFO_PIXELS_VALUE = 60453;
inline constexpr int IDS_INFO_DPI_VALUE = 60454;
inline constexpr int IDS_INFO_DPI_NONE = 60455;
inline constexpr int IDS_OVERWRITE = 60456;
inline constexpr int IDS_EXPORT_OPTIONS = 60457;
inline constexpr int IDS_EXPORT_QUALITY = 60458;
inline constexpr int IDS_EXPORT_QUALITY_TIP = 60459;
inline constexpr int IDS_EXPORT_LOSSLESS = 60460;
inline constexpr int IDS_EXPORT_LOSSLESS_TIP = 60461;
inline constexpr int IDS_EXPORT_PALETTE = 60462;
inline constexpr int IDS_EXPORT_PALETTE_TIP = 60463;
inline constexpr int IDS_EXPORT_COMPRESSION = 60464;
inline constexpr int IDS_EXPORT_COMPRESSION_TIP = 60465;
inline constexpr int IDS_EXPORT_DITHER = 60466;
inline constexpr int IDS_EXPORT_DITHER_TIP = 60467;
inline constexpr int IDS_COMPRESS_NONE = 60468;
inline constexpr int IDS_COMPRESS_LZW = 60469;
inline constexpr int IDS_COMPRESS_DEFLATE = 60470;
inline constexpr int IDS_EXPORT_DONE = 60471;
inline constexpr int IDS_EXPORT_FAILED = 60472;
inline constexpr int IDS_SAVE_FAILED = 61696; ///< the default text of a document that could not be saved
// Swatches and palette files
inline constexpr int IDS_SWATCHES_NOT_FOUND = 60500;
inline constexpr int IDS_NO_FILE_HANDLES = 60501;
inline constexpr int IDS_PALETTE_CANNOT_OPEN = 60502;
inline constexpr int IDS_PALETTE_CANNOT_READ = 60503;
inline constexpr int IDS_PALETTE_CANNOT_WRITE = 60504;
// Colours and numeric controls
inline constexpr int IDS_PICK_TITLE = 60600;
inline constexpr int IDS_PICK_FIELD = 60601;
inline constexpr int IDS_PICK_STRIP = 60602;
inline constexpr int IDS_PICK_HUE = 60603;
inline constexpr int IDS_PICK_SATURATION = 60604;
inline constexpr int IDS_PICK_VALUE = 60605;
inline constexpr int IDS_PICK_RED = 60606;
inline constexpr int IDS_PICK_GREEN = 60607;
inline constexpr int IDS_PICK_BLUE = 60608;
inline constexpr int IDS_PICK_HEX = 60609;
inline constexpr int IDS_PICK_PIPETTE = 60610;
inline constexpr int IDS_PICK_PATCHES = 60611;
inline constexpr int IDS_COLOR_SWATCHES = 60612;
inline constexpr int IDS_COLOR_PATCHES = 60613;
inline constexpr int IDS_COLOR_PATCHES_TIP = 60614;
inline constexpr int IDS_COLOR_SWAP = 60615;
inline constexpr int IDS_COLOR_DEFAULTS = 60616;
inline constexpr int IDS_NUMBER_MORE = 60617;
inline constexpr int IDS_NUMBER_LESS = 60618;
inline constexpr int IDS_NUMBER_SLIDER = 60619;
// History box, colour box and the table of sixteen colours
inline constexpr int IDS_HISTORY_NAME = 60620;
inline constexpr int IDS_HISTORY_UNDONE = 60621;
inline constexpr int IDS_BOX_MENU = 60622;
inline constexpr int IDS_PALETTE_TITLE = 60623;
inline constexpr int IDS_PALETTE_COUNT = 60624;
inline constexpr int IDS_PALETTE_COUNT_TIP = 60625;
inline constexpr int IDS_PALETTE_STRIP = 60626;
inline constexpr int IDS_PALETTE_STRIP_TIP = 60627;
inline constexpr int IDS_PALETTE_BAND = 60628;
inline constexpr int IDS_PALETTE_OPEN = 60629;
inline constexpr int IDS_PALETTE_OPEN_TIP = 60630;
inline constexpr int IDS_PALETTE_SAVE = 60631;
inline constexpr int IDS_PALETTE_SAVE_TIP = 60632;
inline constexpr int IDS_PALETTE_FILTER = 60633;
inline constexpr int IDS_COLOR_ACTIVE_FOREGROUND = 60634;
inline constexpr int IDS_COLOR_ACTIVE_BACKGROUND = 60635;
// The brush box and its dialogs
inline constexpr int IDS_NO_BRUSH_FILES = 1128;
inline constexpr int IDS_BRUSH_ANGLE = 10025;
inline constexpr int IDS_BRUSH_OPTIONS_TITLE = 10043;
inline constexpr int IDS_BRUSH_RADIUS = 10044;
inline constexpr int IDS_BRUSH_HARDNESS = 10045;
inline constexpr int IDS_BRUSH_ROUNDNESS = 10046;
inline constexpr int IDS_BRUSH_CURVE_TITLE = 10233;
inline constexpr int IDS_BRUSH_LIST = 60700;
inline constexpr int IDS_BRUSH_CELL = 60701;
inline constexpr int IDS_BRUSH_FILES = 60702;
inline constexpr int IDS_BRUSH_FILES_TIP = 60703;
inline constexpr int IDS_BRUSH_LIST_MODE = 60704;
inline constexpr int IDS_BRUSH_SOFT_EDGE = 60705;
inline constexpr int IDS_BRUSH_SOFT_EDGE_TIP = 60706;
inline constexpr int IDS_BRUSH_SPACING = 60707;
inline constexpr int IDS_BRUSH_SPACING_TIP = 60708;
inline constexpr int IDS_BRUSH_USE_SPACING = 60709;
inline constexpr int IDS_BRUSH_PREVIEW = 60710;
inline constexpr int IDS_BRUSH_PREVIEW_TIP = 60711;
inline constexpr int IDS_BRUSH_POPUP = 60712;
inline constexpr int IDS_BRUSH_CURVE_STRIP = 60713;
inline constexpr int IDS_BRUSH_CURVE_STRIP_TIP = 60714;
inline constexpr int IDS_BRUSH_NEW = 60715;
inline constexpr int IDS_BRUSH_DELETE = 60716;
inline constexpr int IDS_BRUSH_OPEN = 60717;
inline constexpr int IDS_BRUSH_SAVE = 60718;
inline constexpr int IDS_BRUSH_OPEN_TITLE = 60719;
inline constexpr int IDS_BRUSH_SAVE_TITLE = 60720;
inline constexpr int IDS_BRUSH_FILTER = 60721;
inline constexpr int IDS_BRUSH_SAVE_FAILED = 60722;
inline constexpr int IDS_BRUSH_RADIUS_TIP = 60723;
inline constexpr int IDS_BRUSH_HARDNESS_TIP = 60724;
inline constexpr int IDS_BRUSH_ANGLE_TIP = 60725;
inline constexpr int IDS_BRUSH_ROUNDNESS_TIP = 60726;
inline constexpr int IDS_BRUSH_CURVE = 60727;
inline constexpr int IDS_BRUSH_CURVE_TIP = 60728;
inline constexpr int IDS_BRUSH_CURVE_RESET = 60729;
inline constexpr int IDS_BRUSH_CURVE_RESET_TIP = 60730;
inline constexpr int IDS_BRUSH_ZOOM_IN = 60731;
inline constexpr int IDS_BRUSH_ZOOM_OUT = 60732;
inline constexpr int IDS_BRUSH_ZOOM_TIP = 60733;
// Selection: the mask, its commands and tools
inline constexpr int IDS_BOUNDARY_MEMORY = 60830;
inline constexpr int IDS_FEATHER_TITLE = 60831;
inline constexpr int IDS_BORDER_TITLE = 60832;
inline constexpr int IDS_GROW_TITLE = 60833;
inline constexpr int IDS_SHRINK_TITLE = 60834;
inline constexpr int IDS_MASK_RADIUS = 60835;
inline constexpr int IDS_MASK_WIDTH = 60836;
inline constexpr int IDS_FEATHER_TIP = 60837;
inline constexpr int IDS_BORDER_TIP = 60838;
inline constexpr int IDS_GROW_TIP = 60839;
inline constexpr int IDS_SHRINK_TIP = 60840;
inline constexpr int IDS_BORDER_NEGATIVE = 60841;
inline constexpr int IDS_COMBINE_UNKNOWN = 60842;
// Brush texture and background pattern
inline constexpr int IDS_TEXTURE_NAME = 60770;
inline constexpr int IDS_TEXTURE_NONE = 60771;
inline constexpr int IDS_PATTERN_NAME = 60772;
inline constexpr int IDS_PATTERN_NONE = 60773;
inline constexpr int IDS_PATTERN_PERCENT_TIP = 60774;
inline constexpr int IDS_TEXTURES_EMPTY = 60775;
inline constexpr int IDS_TEXTURE_CANNOT_READ = 60776;

} // namespace kestrune
