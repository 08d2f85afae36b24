#include "app/RecentFiles.h"

#include "ui/Icons.h"

#include <QMimeDatabase>

#include <algorithm>

namespace kestrune {

namespace {

constexpr char c_szSection[] = "Recent File List";
constexpr qsizetype c_nLongestText = 60;

std::string KeyOf(int nIndex)
{
    return "File" + std::to_string(nIndex + 1);
}

QString ToQString(const std::filesystem::path& path)
{
    return QString::fromStdString(path.string());
}

} // namespace

void CRecentFiles::Load(const CProfile& profile)
{
    m_paths.clear();
    for (int i = 0; i < c_nMax; i++) {
        const std::string strPath = profile.GetString(c_szSection, KeyOf(i), {});
        if (!strPath.empty())
            m_paths.emplace_back(strPath);
    }
}

void CRecentFiles::Save(CProfile& profile) const
{
    for (int i = 0; i < c_nMax; i++)
        profile.WriteString(c_szSection, KeyOf(i), i < Count() ? At(i).string() : std::string());
}

void CRecentFiles::Add(const std::filesystem::path& path)
{
    Remove(path);
    m_paths.insert(m_paths.begin(), path);
    if (Count() > c_nMax)
        m_paths.resize(c_nMax);
}

void CRecentFiles::Remove(const std::filesystem::path& path)
{
    std::erase(m_paths, path);
}

QString CRecentFiles::MenuText(int nIndex, const std::filesystem::path& current) const
{
    const std::filesystem::path& path = At(nIndex);
    QString strText = ToQString(path.parent_path() == current ? path.filename() : path);
    if (strText.size() > c_nLongestText) {
        // The name matters more than where its folder begins.
        const QString strName = ToQString(path.filename());
        const qsizetype nKeep = std::max<qsizetype>(0, c_nLongestText - strName.size() - 2);
        strText = strText.left(nKeep) + QStringLiteral("…/") + strName;
    }
    strText.replace(u'&', QStringLiteral("&&"));
    return u'&' + QString::number(nIndex + 1) + u' ' + strText;
}

QIcon CRecentFiles::MenuIcon(int nIndex) const
{
    // By name alone: the file may lie on a folder that does not answer.
    static const QMimeDatabase database;
    const QMimeType type = database.mimeTypeForFile(ToQString(At(nIndex)), QMimeDatabase::MatchExtension);
    QIcon icon = QIcon::fromTheme(type.iconName());
    if (icon.isNull())
        icon = QIcon::fromTheme(type.genericIconName());
    return icon.isNull() ? LoadIcon(QStringLiteral("doc")) : icon;
}

} // namespace kestrune
