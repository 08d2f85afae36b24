#include "resources/gui/TextureBox.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/Bitmap.h"
#include "resources/Textures.h"
#include "resources/gui/TextureWnd.h"
#include "ui/Dialog.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrune {

namespace {

constexpr QSize c_patch(40, 24), c_preview(20, 18);

/// The active pixels as an image that shares the tools' memory.
QImage ActiveImage(TextureKind kind)
{
    if (kind == TextureKind::Brush)
        return {g_brushTexture.aBytes.data(), g_brushTexture.nWidth, g_brushTexture.nHeight, g_brushTexture.nWidth,
                QImage::Format_Grayscale8};
    return {g_paintPattern.aPixels.data(), g_paintPattern.nWidth, g_paintPattern.nHeight, 3 * qsizetype{g_paintPattern.nWidth},
            QImage::Format_RGB888};
}

} // namespace

CTextureBox::CTextureBox(TextureKind kind, std::filesystem::path pathFolder, QWidget* pParent)
    : QFrame(pParent, Qt::Popup)
    , m_kind(kind)
    , m_pathFolder(std::move(pathFolder))
    , m_pGrid(new CTextureWnd(this))
    , m_pEmpty(new QLabel(TextOf(IDS_TEXTURES_EMPTY), this))
{
    setObjectName(kind == TextureKind::Brush ? QStringLiteral("TextureBox") : QStringLiteral("PatternBox"));
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(8, 8, 8, 8);
    pLayout->setSpacing(6);
    pLayout->addWidget(m_pGrid);
    m_pEmpty->setEnabled(false);
    m_pEmpty->setAlignment(Qt::AlignCenter);
    pLayout->addWidget(m_pEmpty);
    auto* pNone = new QPushButton(NoneText(), this);
    pNone->setObjectName(QStringLiteral("None"));
    pLayout->addWidget(pNone);
    m_pGrid->setAccessibleName(TextOf(kind == TextureKind::Brush ? IDS_TEXTURE_NAME : IDS_PATTERN_NAME));

    connect(m_pGrid, &CTextureWnd::Chosen, this, [this](const std::filesystem::path& path) {
        hide();
        ChooseOrSay(path);
    });
    connect(pNone, &QPushButton::clicked, this, [this] {
        Clear();
        hide();
    });
}

bool CTextureBox::Choose(const std::filesystem::path& path)
{
    LBitmapBase bitmap;
    if (!LoadTextureBitmap(path, bitmap))
        return false;
    if (m_kind == TextureKind::Brush)
        g_brushTexture = MakeBrushTexture(bitmap);
    else
        g_paintPattern = MakePattern(bitmap, g_paintPattern.nPercent);
    m_pathActive = path;
    Q_EMIT Changed();
    return true;
}

void CTextureBox::ChooseOrSay(const std::filesystem::path& path)
{
    if (!Choose(path))
        SayMessage(std::string(StringText(IDS_TEXTURE_CANNOT_READ)) + "\n" + path.filename().string());
}

QString CTextureBox::NoneText() const
{
    return TextOf(m_kind == TextureKind::Brush ? IDS_TEXTURE_NONE : IDS_PATTERN_NONE);
}

void CTextureBox::ScanInto(CTextureWnd& grid)
{
    grid.Scan(m_pathFolder);
    if (grid.count() == 0 && m_kind == TextureKind::Brush && !std::exchange(m_bToldEmpty, true))
        SayStop(IDS_NO_TEXTURES);
}

void CTextureBox::Clear()
{
    if (m_kind == TextureKind::Brush)
        g_brushTexture = {};
    else
        g_paintPattern = {{}, 0, 0, g_paintPattern.nPercent};
    m_pathActive.clear();
    Q_EMIT Changed();
}

void CTextureBox::SetPercent(int nPercent)
{
    nPercent = std::clamp(nPercent, 0, 100);
    if (std::exchange(g_paintPattern.nPercent, nPercent) != nPercent)
        Q_EMIT Changed();
}

bool CTextureBox::IsActive() const
{
    return m_kind == TextureKind::Brush ? !g_brushTexture.aBytes.empty() : !g_paintPattern.aPixels.empty();
}

QString CTextureBox::Name() const
{
    return QString::fromStdString(m_pathActive.stem().string());
}

QPixmap CTextureBox::Preview(QSize size, qreal fScale) const
{
    QPixmap pixmap((QSizeF(size) * fScale).toSize());
    pixmap.setDevicePixelRatio(fScale);
    pixmap.fill(palette().color(QPalette::Base));
    QPainter painter(&pixmap);
    const QRectF rc(0.5, 0.5, size.width() - 1, size.height() - 1);
    if (IsActive()) {
        const QImage image = ActiveImage(m_kind);
        // A grain of more than a few pixels would fill the patch with one of its holes.
        const QImage tile = image.copy(0, 0, std::min(image.width(), 256), std::min(image.height(), 256))
                                .scaled(image.size().boundedTo({256, 256}) / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter.drawTiledPixmap(QRect(QPoint(), size), QPixmap::fromImage(tile.isNull() ? image : tile));
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(ThemeQuietText(), 1));
        painter.drawLine(rc.bottomLeft(), rc.topRight());
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
    painter.setPen(ThemeQuietText());
    painter.drawRect(rc);
    return pixmap;
}

void CTextureBox::OpenBeside(const QWidget& patch)
{
    if (!m_bScanned) {
        m_bScanned = true;
        ScanInto(*m_pGrid);
        m_pGrid->setVisible(m_pGrid->count() > 0);
        m_pEmpty->setVisible(m_pGrid->count() == 0);
    }
    m_pGrid->ShowChosen(m_pathActive);
    adjustSize();
    const QRect rcScreen = patch.screen()->availableGeometry();
    const QPoint ptBelow = patch.mapToGlobal(QPoint(0, patch.height() + 1));
    const int x = std::clamp(ptBelow.x(), rcScreen.left(), std::max(rcScreen.left(), rcScreen.right() - width()));
    const int y = ptBelow.y() + height() > rcScreen.bottom() ? patch.mapToGlobal(QPoint(0, -height() - 1)).y() : ptBelow.y();
    move(x, y);
    show();
    m_pGrid->setFocus(Qt::PopupFocusReason);
}

CTexturePatch::CTexturePatch(CTextureBox& box, QWidget* pParent)
    : QToolButton(pParent)
    , m_box(box)
{
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(c_patch);
    connect(&box, &CTextureBox::Changed, this, &CTexturePatch::ShowActive);
    connect(this, &QToolButton::clicked, this, [this] { m_box.OpenBeside(*this); });
    ShowActive();
}

void CTexturePatch::ShowActive()
{
    const qreal fScale = devicePixelRatioF();
    const QSize size(c_preview.width() + 14, c_preview.height());
    QPixmap pixmap((QSizeF(size) * fScale).toSize());
    pixmap.setDevicePixelRatio(fScale);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        painter.drawPixmap(0, 0, m_box.Preview(c_preview, fScale));
        painter.drawPixmap(c_preview.width() + 3, 4, LoadPixmapIcon(QStringLiteral("widgets/arrow-down"), {10, 10}, fScale));
    }
    setIcon(QIcon(pixmap));
    setIconSize(size);
    setAccessibleDescription(m_box.Name());
}

void CTexturePatch::changeEvent(QEvent* pEvent)
{
    QToolButton::changeEvent(pEvent);
    if (pEvent->type() == QEvent::PaletteChange)
        ShowActive(); // the theme changed
}

} // namespace kestrune
