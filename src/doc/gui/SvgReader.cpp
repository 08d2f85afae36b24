#include "doc/gui/SvgReader.h"

#include "base/Log.h"
#include "doc/files/Gzip.h"
#include "doc/files/ImageFile.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace kestrune {

namespace {

constexpr std::size_t c_nMostText = 64u << 20; ///< bytes of a drawing, unpacked
constexpr int c_nMostDepth = 256;              ///< of elements in elements: the toolkit draws them by recursion
constexpr double c_fMostDrawn = 2e6;           ///< elements drawn, counting each repetition
constexpr int c_nTile = 2048;                  ///< pixels a side that are drawn at once: the painter has 16-bit limits

/// What hangs on an element that others may refer to: how much it draws and whom it refers to itself.
struct Part {
    double fElements = 0;
    std::vector<QString> links;
};

/// Counts what drawing costs when every link is followed, and finds links in a circle.
class CLinkCounter {
public:
    explicit CLinkCounter(const QHash<QString, Part>& parts) : m_parts(parts) {}

    /// The elements that the part draws; infinite for a circle.
    double Cost(const QString& strId)
    {
        const auto known = m_costs.constFind(strId);
        if (known != m_costs.constEnd())
            return *known;
        const auto part = m_parts.constFind(strId);
        if (part == m_parts.constEnd())
            return 0;
        m_costs[strId] = HUGE_VAL; // met again while it is counted: a circle
        double fCost = part->fElements;
        if (++m_nDepth > c_nMostDepth)
            fCost = HUGE_VAL;
        for (const QString& strLink : part->links)
            fCost += Cost(strLink);
        m_nDepth--;
        m_costs[strId] = fCost;
        return fCost;
    }

private:
    const QHash<QString, Part>& m_parts;
    QHash<QString, double> m_costs;
    int m_nDepth = 0;
};

bool IsLink(QStringView name)
{
    return name == u"href" || name.endsWith(u":href");
}

/// Copies the drawing element by element, leaving out what must not be followed.
class CSvgCleaner {
public:
    QByteArray Clean(const QByteArray& svg)
    {
        QXmlStreamReader in(svg);
        in.setNamespaceProcessing(false);
        QByteArray result;
        QXmlStreamWriter out(&result);
        while (!in.atEnd() && !m_bRefused) {
            switch (in.readNext()) {
            case QXmlStreamReader::StartElement:
                if (in.name() == u"script" || in.name() == u"foreignObject") {
                    in.skipCurrentElement();
                    break;
                }
                out.writeStartElement(in.qualifiedName().toString());
                CopyAttributes(in, out);
                break;
            case QXmlStreamReader::EndElement:
                out.writeEndElement();
                m_open.pop_back();
                break;
            case QXmlStreamReader::Characters:
                out.writeCharacters(in.text().toString());
                break;
            default:
                break; // document types, processing instructions and comments draw nothing of their own
            }
        }
        const bool bOk = !in.hasError() && !m_bRefused && CLinkCounter(m_parts).Cost(QString()) <= c_fMostDrawn;
        return bOk ? result : QByteArray();
    }

private:
    void CopyAttributes(const QXmlStreamReader& in, QXmlStreamWriter& out)
    {
        if (static_cast<int>(m_open.size()) >= c_nMostDepth)
            m_bRefused = true;
        const auto attributes = in.attributes();
        // The nameless part stands for the drawing as a whole.
        m_open.push_back(attributes.value(QLatin1String("id")).toString());
        CountFor([](Part& part) { part.fElements++; });
        for (const QXmlStreamAttribute& attribute : attributes) {
            const QStringView value = attribute.value().trimmed();
            if (IsLink(attribute.qualifiedName())) {
                if (value.startsWith(u'#')) {
                    const QString strTarget = value.mid(1).toString();
                    if (std::find(m_open.begin(), m_open.end(), strTarget) != m_open.end())
                        continue; // an element within itself
                    CountFor([&](Part& part) { part.links.push_back(strTarget); });
                } else if (!value.startsWith(u"data:image/", Qt::CaseInsensitive)
                           || value.startsWith(u"data:image/svg", Qt::CaseInsensitive)) {
                    continue; // out of the file, or a drawing in the drawing that nobody has looked through
                }
            }
            out.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
        }
    }
    /// What an element draws counts for itself, for each named element around it, and for the whole.
    template <typename Act>
    void CountFor(const Act& act)
    {
        act(m_parts[QString()]);
        for (const QString& strId : m_open)
            if (!strId.isEmpty())
                act(m_parts[strId]);
    }

    QHash<QString, Part> m_parts;
    std::vector<QString> m_open; ///< the ids of the elements that are open, empty for those without
    bool m_bRefused = false;
};

void DrawTile(QSvgRenderer& renderer, LBitmapBase& bitmap, const QRect& tile)
{
    QImage image(tile.size(), QImage::Format_RGB32);
    if (image.isNull())
        throw std::bad_alloc();
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(-tile.x(), -tile.y(), bitmap.GetWidth(), bitmap.GetHeight()));
    painter.end();
    for (int y = 0; y < tile.height(); y++) {
        const QRgb* p = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        std::uint8_t* pTo = bitmap.WriteRow(tile.y() + y) + static_cast<std::ptrdiff_t>(tile.x()) * 3;
        for (int x = 0; x < tile.width(); x++, pTo += 3) {
            pTo[0] = static_cast<std::uint8_t>(qBlue(p[x]));
            pTo[1] = static_cast<std::uint8_t>(qGreen(p[x]));
            pTo[2] = static_cast<std::uint8_t>(qRed(p[x]));
        }
    }
}

} // namespace

QByteArray CleanSvg(const QByteArray& svg)
{
    return CSvgCleaner().Clean(svg);
}

int ReadSvg(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    std::vector<std::uint8_t> unpacked;
    if (IsGzip(file)) {
        auto plain = Gunzip(file, c_nMostText);
        if (!plain)
            return IMG_ERROR_FILE_READ;
        unpacked = std::move(*plain);
        file = unpacked;
    }
    if (file.size() > c_nMostText)
        return IMG_ERROR_MEMORY;
    const QByteArray svg = CleanSvg(QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size())));
    if (svg.isEmpty())
        return IMG_ERROR_FILE_READ;
    QSvgRenderer renderer;
    if (!renderer.load(svg))
        return IMG_ERROR_FILE_READ;
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    const QSize size = renderer.defaultSize();
    if (size.width() <= 0 || size.height() <= 0)
        return IMG_ERROR_FILE_READ;
    if (!IsSaneSize(size.width(), size.height(), Limits()))
        return IMG_ERROR_MEMORY;
    LBitmapBase picture;
    picture.Create(size.width(), size.height(), 24);
    for (int y = 0; y < size.height(); y += c_nTile)
        for (int x = 0; x < size.width(); x += c_nTile)
            DrawTile(renderer, picture, QRect(x, y, c_nTile, c_nTile).intersected(QRect(QPoint(0, 0), size)));
    bitmap.Copy(picture);
    return IMG_SUCCESS;
}

void RegisterSvgReader()
{
    RegisterReader(ImageFormat::Svg, ReadSvg);
}

} // namespace kestrune
