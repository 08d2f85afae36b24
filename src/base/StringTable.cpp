#include "base/StringTable.h"

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

struct StringRow {
    int nId;
    std::string_view text;
};

// Ascending by number.
constexpr StringRow c_aStrings[] = {
    {IDS_OLE_INIT_FAILED, "프로그램을 시작하지 못했습니다. 시스템 초기화에 실패하였습니다."},
    {IDS_PRODUCT_NAME, "케스트룬"},
    {IDS_BAD_FORMAT, "올바른 파일 형식이 아닙니다."},
    {IDS_LOAD_ERROR, "이미지를 로딩하는 도중 오류가 발생하였습니다.! -> 오류 코드:"},
    {IDS_NUMBER_OUT_OF_RANGE, "Given value is out of range.\n"},
    {IDS_NUMBER_EXPECTED, "Characters must be a number.\n"},
    {IDS_CANNOT_READ, "파일을 읽을 수 없습니다."},
    {IDS_CANNOT_CREATE, "파일을 만들 수 없습니다."},
    {IDS_CANNOT_WRITE, "파일에 쓸 수 없습니다."},
    {IDS_CANNOT_KEEP, "복구 폴더에 원본을 보관할 수 없습니다."},
    {IDS_REASON_MISSING, "파일이나 폴더가 없습니다."},
    {IDS_REASON_DENIED, "권한이 없습니다."},
    {IDS_REASON_READONLY, "읽기 전용입니다."},
    {IDS_REASON_FULL, "디스크에 빈 공간이 없습니다."},
    {IDS_REASON_TOOBIG, "파일이 너무 큽니다."},
    {IDS_REASON_FOLDER, "폴더입니다."},
    {IDS_REASON_DEVICE, "장치에서 오류가 발생하였습니다."},
    {IDS_REASON_NAME, "이름이 너무 깁니다."},
    {IDS_OUT_OF_MEMORY, "메모리가 부족합니다."},
    {IDS_SAVE_ERROR, "이미지를 저장하는 도중 오류가 발생하였습니다. -> 오류 코드:"},
    {IDS_SAVED_AS_JPEG, "JPEG 형식으로 저장하였습니다: "},
    {IDS_OLD_FILE_KEPT, "파일의 이전 내용을 복구 폴더에 보관하였습니다: "},
    {IDS_BOX_CLOSE, "닫기"},
    {IDS_HINT_DROP, "이미지 파일을 이곳에 끌어다 놓으십시오"},
    {IDS_HINT_KEYS, "열기 Ctrl+O      새 이미지 Ctrl+N"},
    {IDS_ZOOM_LABEL, "배율(&Z):"},
    {IDS_ZOOM_TIP, "화면 배율을 퍼센트로 고르거나 입력합니다"},
    {IDS_FRAME_FOLLOWS_ZOOM, "윈도우 크기 동시 변경"},
    {IDS_FRAME_FOLLOWS_ZOOM_TIP, "배율을 바꿀 때 창의 크기도 이미지에 맞게 바꿉니다"},
    {IDS_ASK_SAVE, "\"%s\"의 내용이 바뀌었습니다. 저장하시겠습니까?"},
    {IDS_SETTINGS_NOT_SAVED, "설정을 저장하지 못했습니다. 설정 폴더의 쓰기 권한과 남은 공간을 확인하십시오."},
    {IDS_SETTINGS_CORRUPT, "설정 파일이 손상되어 기본 설정으로 시작합니다. 이전 파일은 이름 뒤에 .corrupt를 붙여 보관했습니다."},
    {IDS_COMMAND_OUT_OF_MEMORY, "메모리가 부족하여 명령을 실행하지 못했습니다. 다른 이미지를 닫고 다시 시도하십시오."},
    {IDS_COMMAND_FAILED, "명령을 실행하지 못했습니다."},
    {IDS_NEW_DOCUMENT, "새 이미지"},
    {IDS_ABOUT_TITLE, "케스트룬 정보"},
    {IDS_ABOUT_WHAT, "그리고, 고르고, 다듬는 이미지 편집기"},
    {IDS_ABOUT_CREDITS, "케스트룬\n\n브러시와 아이콘, 커서, 질감, 그레디언트는\n모두 이 프로그램을 위해 새로 만들었습니다.\n\n함께 쓰인 자유 소프트웨어\n\nQt\nlibjpeg-turbo\nlibpng, libdeflate\nlibtiff\nGraphicsMagick\nLittle CMS\noneTBB\nHighway\n\n만든 모든 분께 감사드립니다."},
    {IDS_PRINT_FAILED, "인쇄를 시작하지 못했습니다. 프린터가 켜져 있는지, 저장할 위치에 쓸 수 있는지 확인하십시오."},
    {IDS_BUTTON_OK, "확인"},
    {IDS_BUTTON_CANCEL, "취소"},
    {IDS_BUTTON_YES, "예(&Y)"},
    {IDS_BUTTON_NO, "아니요(&N)"},
    {IDS_BUTTON_CLOSE, "닫기(&C)"},
    {IDS_UNIT_PIXEL, "픽셀 (px)"},
    {IDS_UNIT_CENTIMETER, "센티미터 (cm)"},
    {IDS_UNIT_MILLIMETER, "밀리미터 (mm)"},
    {IDS_UNIT_INCH, "인치 (in)"},
    {IDS_NEW_IMAGE_TITLE, "새로운 이미지"},
    {IDS_NEW_WIDTH, "폭(&W):"},
    {IDS_NEW_WIDTH_TIP, "새 이미지의 폭 (1~5000 픽셀)"},
    {IDS_NEW_HEIGHT, "높이(&H):"},
    {IDS_NEW_HEIGHT_TIP, "새 이미지의 높이 (1~5000 픽셀)"},
    {IDS_NEW_UNIT, "단위(&U):"},
    {IDS_NEW_UNIT_TIP, "폭과 높이를 입력할 단위 (인치당 96 픽셀 기준)"},
    {IDS_NEW_KIND, "배경(&B):"},
    {IDS_NEW_KIND_TIP, "새 이미지를 채울 색"},
    {IDS_NEW_COLOR, "이미지 형식(&T):"},
    {IDS_NEW_COLOR_TIP, "새 이미지의 색상 모드"},
    {IDS_NEW_MEMORY, "필요한 메모리:"},
    {IDS_FILL_WHITE, "흰색"},
    {IDS_FILL_BLACK, "검은색"},
    {IDS_FILL_BACKGROUND, "배경색"},
    {IDS_COLOR_BITMAP, "비트맵 (1 비트)"},
    {IDS_COLOR_GRAY, "그레이 스케일 (8 비트)"},
    {IDS_COLOR_RGB, "RGB 색상 (24 비트)"},
    {IDS_FILTER_ALL, "모든 파일"},
    {IDS_OPEN_TITLE, "Open Bitmap File"},
    {IDS_OPEN_BUTTON, "열기(&O)"},
    {IDS_SAVE_BUTTON, "저장(&S)"},
    {IDS_EXPORT_BUTTON, "내보내기(&E)"},
    {IDS_SAVE_TITLE, "저장"},
    {IDS_SAVEAS_TITLE, "다른 이름으로 저장"},
    {IDS_EXPORT_TITLE, "내보내기"},
    {IDS_FILE_NAME, "파일 이름(&N):"},
    {IDS_FILE_TYPE, "파일 형식(&T):"},
    {IDS_FILE_LOOK_IN, "찾는 위치:"},
    {IDS_PREVIEW_NONE, "파일을 선택하면 미리 보기가 나타납니다."},
    {IDS_PREVIEW_BUSY, "읽는 중..."},
    {IDS_PREVIEW_FAILED, "미리 볼 수 없는 파일입니다."},
    {IDS_PREVIEW_TOO_BIG, "너무 큰 파일은 미리 보지 않습니다."},
    {IDS_PREVIEW_NAME, "미리 보기"},
    {IDS_INFO_BUTTON, "파일 정보(&I)..."},
    {IDS_INFO_BUTTON_TIP, "선택한 파일의 크기와 색상 비트, 해상도를 봅니다"},
    {IDS_INFO_TITLE, "파일 정보"},
    {IDS_INFO_PATH, "경로:"},
    {IDS_INFO_BITS, "비트 수:"},
    {IDS_INFO_WIDTH, "폭:"},
    {IDS_INFO_HEIGHT, "높이:"},
    {IDS_INFO_XRES, "수평 해상도:"},
    {IDS_INFO_YRES, "수직 해상도:"},
    {IDS_INFO_BITS_VALUE, "%1 비트"},
    {IDS_INFO_PIXELS_VALUE, "%1 픽셀"},
    {IDS_INFO_DPI_VALUE, "%1 dpi"},
    {IDS_INFO_DPI_NONE, "정보 없음"},
    {IDS_OVERWRITE, "파일이 이미 있습니다. 바꾸시겠습니까?\n"},
    {IDS_EXPORT_OPTIONS, "형식 옵션"},
    {IDS_EXPORT_QUALITY, "품질(&Q):"},
    {IDS_EXPORT_QUALITY_TIP, "1 (작은 파일)에서 100 (좋은 화질)까지"},
    {IDS_EXPORT_LOSSLESS, "무손실 압축(&L)"},
    {IDS_EXPORT_LOSSLESS_TIP, "화질을 잃지 않고 저장합니다"},
    {IDS_EXPORT_PALETTE, "팔레트 색상 유지(&P)"},
    {IDS_EXPORT_PALETTE_TIP, "256색 이하인 이미지를 그 팔레트 그대로 저장합니다"},
    {IDS_EXPORT_COMPRESSION, "압축(&M):"},
    {IDS_EXPORT_COMPRESSION_TIP, "화질을 잃지 않는 압축 방식"},
    {IDS_EXPORT_DITHER, "디더링(&D)"},
    {IDS_EXPORT_DITHER_TIP, "256색으로 줄일 때 점을 흩어 색의 경계를 부드럽게 합니다"},
    {IDS_COMPRESS_NONE, "없음"},
    {IDS_COMPRESS_LZW, "LZW"},
    {IDS_COMPRESS_DEFLATE, "ZIP"},
    {IDS_EXPORT_DONE, "내보냈습니다: "},
    {IDS_EXPORT_FAILED, "파일을 내보내지 못했습니다. 폴더의 쓰기 권한과 남은 공간을 확인하십시오.\n"},
    {IDS_SWATCHES_NOT_FOUND, "Default.pal not found"},
    {IDS_NO_FILE_HANDLES, "No more file handles available"},
    {IDS_PALETTE_CANNOT_OPEN, "Unable to open file for reading"},
    {IDS_PALETTE_CANNOT_READ, "Error during reading"},
    {IDS_PALETTE_CANNOT_WRITE, "Unable to open file for writing"},
    {IDS_PICK_TITLE, "색상 선택"},
    {IDS_PICK_FIELD, "색상 판"},
    {IDS_PICK_STRIP, "색상 띠"},
    {IDS_PICK_HUE, "색조(&H)"},
    {IDS_PICK_SATURATION, "채도(&S)"},
    {IDS_PICK_VALUE, "명도(&V)"},
    {IDS_PICK_RED, "빨강(&R)"},
    {IDS_PICK_GREEN, "초록(&G)"},
    {IDS_PICK_BLUE, "파랑(&B)"},
    {IDS_PICK_HEX, "16진수(&X):"},
    {IDS_PICK_PIPETTE, "화면에서 색상 뽑기"},
    {IDS_PICK_PATCHES, "위는 새 색상, 아래는 이전 색상입니다."},
    {IDS_COLOR_SWATCHES, "색상 견본"},
    {IDS_COLOR_PATCHES, "전경색과 배경색"},
    {IDS_COLOR_PATCHES_TIP, "누르면 그 색이 선택되고, 선택된 색을 다시 누르면 색상을 고릅니다."},
    {IDS_COLOR_SWAP, "전경색과 배경색 바꾸기"},
    {IDS_COLOR_DEFAULTS, "검은색과 흰색으로"},
    {IDS_NUMBER_MORE, "늘리기"},
    {IDS_NUMBER_LESS, "줄이기"},
    {IDS_NUMBER_SLIDER, "슬라이더 열기"},
    {IDS_SAVE_FAILED, "문서를 저장하지 못했습니다."},
};

constexpr bool IsAscending()
{
    for (std::size_t i = 1; i < std::size(c_aStrings); i++)
        if (c_aStrings[i - 1].nId >= c_aStrings[i].nId)
            return false;
    return true;
}
static_assert(IsAscending(), "a number stands twice or out of order");

} // namespace

std::string_view StringText(int nId)
{
    const auto it = std::lower_bound(std::begin(c_aStrings), std::end(c_aStrings), nId,
                                     [](const StringRow& row, int id) { return row.nId < id; });
    return it != std::end(c_aStrings) && it->nId == nId ? it->text : std::string_view{};
}

} // namespace kestrune
