#include "resources/gui/TextureWnd.h"

#include "doc/Bitmap.h"
#include "doc/gui/ToolkitImage.h"
#include "resources/Textures.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nThumbnail = 34;
constexpr int c_nCell = 40;
constexpr int c_nColumns = 6;
constexpr int c_nMostRows = 6;

/// The picture from its upper left corner, in its own size where it is larger: a texture is known by its grain.
QIcon Thumbnail(const std::filesystem::path& path, qreal fScale)
{
    QPixmap pixmap(QSize(c_nThumbnail, c_nThumbnail) * fScale);
    pixmap.setDevicePixelRatio(fScale);
    pixmap.fill(Qt::transparent);
    LBitmapBase bitmap;
    if (LoadTextureBitmap(path, bitmap)) {
        bitmap.Trim(0, 0, std::min(bitmap.GetWidth(), 256), std::min(bitmap.GetHeight(), 256));
        const QImage image = ToToolkitImage(bitmap);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRect(0, 0, c_nThumbnail, c_nThumbnail),
                          image.copy(0, 0, std::min(image.width(), 2 * c_nThumbnail), std::min(image.height(), 2 * c_nThumbnail)));
        painter.setPen(QColor(0, 0, 0, 90));
        painter.drawRect(QRectF(0.5, 0.5, c_nThumbnail - 1, c_nThumbnail - 1));
    }
    return QIcon(pixmap);
}

/// The chosen one has a frame: a tint, as the toolkit's own delegate lays over it, would hide the grain.
class CTextureDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QRect rc(0, 0, c_nThumbnail, c_nThumbnail);
        rc.moveCenter(option.rect.center());
        qvariant_cast<QIcon>(index.data(Qt::DecorationRole)).paint(pPainter, rc);
        const bool bSelected = option.state & QStyle::State_Selected;
        if (bSelected || option.state & QStyle::State_HasFocus) {
            const int nWidth = bSelected ? 2 : 1;
            pPainter->setPen(QPen(ThemeAccent(), nWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
            const qreal fOut = 1 + nWidth / 2.0;
            pPainter->drawRect(QRectF(rc).adjusted(-fOut, -fOut, fOut, fOut));
        }
    }
};

QVariant PathData(const std::filesystem::path& path)
{
    return QByteArray::fromStdString(path.string());
}

} // namespace

CTextureWnd::CTextureWnd(QWidget* pParent)
    : QListWidget(pParent)
{
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setIconSize({c_nThumbnail, c_nThumbnail});
    setGridSize({c_nCell, c_nCell});
    setItemDelegate(new CTextureDelegate(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const auto choose = [this](const QListWidgetItem* pItem) {
        Q_EMIT Chosen(std::filesystem::path(pItem->data(Qt::UserRole).toByteArray().toStdString()));
    };
    connect(this, &QListWidget::itemClicked, this, choose);
    connect(this, &QListWidget::itemActivated, this, choose); // Enter
}

void CTextureWnd::Scan(const std::filesystem::path& folder)
{
    clear();
    for (const std::filesystem::path& path : ScanTextureFolder(folder)) {
        auto* pItem = new QListWidgetItem(Thumbnail(path, devicePixelRatioF()), {}, this);
        const QString strName = QString::fromStdString(path.stem().string());
        pItem->setToolTip(strName);
        pItem->setData(Qt::AccessibleTextRole, strName);
        pItem->setData(Qt::UserRole, PathData(path));
        pItem->setSizeHint({c_nCell, c_nCell});
    }
}

void CTextureWnd::ShowChosen(const std::filesystem::path& path)
{
    for (int i = 0; i < count(); i++)
        if (item(i)->data(Qt::UserRole) == PathData(path)) {
            setCurrentRow(i);
            return;
        }
    setCurrentRow(-1);
}

QSize CTextureWnd::sizeHint() const
{
    const int nRows = std::clamp((count() + c_nColumns - 1) / c_nColumns, 1, c_nMostRows);
    return {c_nColumns * c_nCell + 2 * frameWidth() + 18, nRows * c_nCell + 2 * frameWidth() + 4};
}

} // namespace kestrune
