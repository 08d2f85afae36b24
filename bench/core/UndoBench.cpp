// The history of a picture of 100 megapixels: whole-picture records of steps that change 1 % of it.
#include "Harness.h"

#include "undo/UndoStack.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace kestrune::bench {

namespace {

constexpr int c_nSide = 10000;
constexpr std::size_t c_nBytes = static_cast<std::size_t>(c_nSide) * c_nSide * 3;

enum Shape { BLOCK, ROWS, STROKE };
constexpr const char* c_aShapes[] = {"a block", "rows", "a slanting stroke"};

struct Picture {
    CPaintImage image;
    std::vector<std::uint8_t> from = std::vector<std::uint8_t>(c_nBytes, 1),
                              to = std::vector<std::uint8_t>(c_nBytes, 2);
    Shape shape;
    int nStep = 0;

    explicit Picture(Shape s)
        : shape(s)
    {
        image.Create(c_nSide, c_nSide, FILL_WHITE, COLOR_RGB);
        for (int y = 0; y < c_nSide; y++)
            std::memset(image.m_Bitmap.WriteRow(y), y & 255, image.m_Bitmap.GetRowBytes());
        image.m_BaseBitmap.Copy(image.m_Bitmap);
        RecordFirstState(image, 2);
    }

    void Change(const CRect& rc)
    {
        for (int y = rc.top; y < rc.bottom; y++) {
            std::uint8_t* p = image.m_Bitmap.WriteRow(y);
            for (int x = rc.left * 3; x < rc.right * 3; x++)
                p[x] = static_cast<std::uint8_t>(p[x] + 37);
        }
    }
    /// One act's change of 1 % of the pixels.
    bool bActed = false; ///< since the last push
    void Act()
    {
        const int i = nStep++ % 20;
        if (shape == BLOCK)
            Change({i * 450, i * 440, i * 450 + 1000, i * 440 + 1000});
        else if (shape == ROWS)
            Change({0, i * 490, c_nSide, i * 490 + 100});
        else
            for (int y = 0; y < c_nSide; y += 10)
                Change({y * 9 / 10 + i * 40, y, y * 9 / 10 + i * 40 + 100, y + 10});
        image.m_BaseBitmap.Copy(image.m_Bitmap);
        SettleHistory(image);
    }
    void Push() { PushRect(image, 0, 0, c_nSide, c_nSide, 22); }
    void Memcpy() { std::memcpy(to.data(), from.data(), c_nBytes); }
};

void RegisterShape(Shape shape)
{
    const auto picture = std::make_shared<Picture>(shape);
    for (int i = 0; i < 20; i++) {
        picture->Push();
        picture->Act();
    }
    const double fAll = static_cast<double>(HistoryBytes(picture->image)) / c_nBytes;
    std::printf("20 records of 100 megapixels, 1 %% each, %s: %.3f of the picture <= 0.6 %s\n", c_aShapes[shape], fAll,
                fAll <= 0.6 ? "ok" : "OVER");

    const std::string strEnd = std::string(", ") + c_aShapes[shape] + " / copying the picture";
    Register({"push" + strEnd, 0.02, [=] { picture->Push(); }, [=] { picture->Memcpy(); }, [=] { picture->Act(); }});
    // 5 % of a copy, and the 1 % that is exchanged: an exchange moves twice what a copy does.
    Register({"undo, newest record" + strEnd, 0.07, [=] { UndoCommand(picture->image); }, [=] { picture->Memcpy(); },
              [=] {
                  if (picture->bActed) {
                      JumpToHistory(picture->image, static_cast<int>(HistoryRows(picture->image).size()) - 1);
                  } else { // the bar before this one left a record whose act is still to come
                      picture->Act();
                      picture->bActed = true;
                  }
              }});
    Register({"undo, older record" + strEnd, 0.07, [=] { UndoCommand(picture->image); }, [=] { picture->Memcpy(); },
              [=] { JumpToHistory(picture->image, 15); }});
    Register({"redo, older record" + strEnd, 0.07, [=] { RedoCommand(picture->image); }, [=] { picture->Memcpy(); },
              [=] { JumpToHistory(picture->image, 14); }});
}

const Group g_block("undo, a block", [] { RegisterShape(BLOCK); });
const Group g_rows("undo, rows", [] { RegisterShape(ROWS); });
const Group g_stroke("undo, a slanting stroke", [] { RegisterShape(STROKE); });

} // namespace

} // namespace kestrune::bench
