#include "doc/gui/FileDialog.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "ui/DialogRows.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QStandardPaths>
#include <QTreeView>

namespace kestrune {

namespace {

constexpr const char* c_strSection = "Files";

const char* FolderKey(CFileDialogFrame::Kind kind)
{
    return kind == CFileDialogFrame::OpenFiles ? "Open Folder" : "Save Folder";
}

const char* LookKey(CFileDialogFrame::Kind kind)
{
    return kind == CFileDialogFrame::OpenFiles ? "Open Dialog" : "Save Dialog";
}

QString StartFolder(const CProfile& profile, CFileDialogFrame::Kind kind)
{
    const QString strLast = QString::fromStdString(profile.GetString(c_strSection, FolderKey(kind), ""));
    if (!strLast.isEmpty() && QFileInfo(strLast).isDir())
        return strLast;
    const QString strPictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(strPictures).isDir() ? strPictures : QDir::currentPath();
}

std::filesystem::path ToPath(const QString& strPath)
{
    return std::filesystem::path(QFile::encodeName(strPath).toStdString());
}

} // namespace

CFileDialogFrame::CFileDialogFrame(CProfile& profile, Kind kind, const QString& strAcceptText, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_profile(profile)
    , m_kind(kind)
    , m_pBrowser(new QFileDialog(this))
{
    m_pBrowser->setOption(QFileDialog::DontUseNativeDialog);
    m_pBrowser->setOption(QFileDialog::DontConfirmOverwrite); // asked here, through the program's own message box
    m_pBrowser->setOption(QFileDialog::HideNameFilterDetails); // a row's text stands before its patterns
    m_pBrowser->setAcceptMode(kind == OpenFiles ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    m_pBrowser->setFileMode(kind == OpenFiles ? QFileDialog::ExistingFiles : QFileDialog::AnyFile);
    m_pBrowser->setLabelText(QFileDialog::Accept, strAcceptText);
    m_pBrowser->setLabelText(QFileDialog::Reject, TextOf(IDS_BUTTON_CANCEL));
    m_pBrowser->setLabelText(QFileDialog::FileName, TextOf(IDS_FILE_NAME));
    m_pBrowser->setLabelText(QFileDialog::FileType, TextOf(IDS_FILE_TYPE));
    m_pBrowser->setLabelText(QFileDialog::LookIn, TextOf(IDS_FILE_LOOK_IN));
    m_pBrowser->setWindowFlags(Qt::Widget);
    m_pBrowser->setSizeGripEnabled(false);
    m_pBrowser->layout()->setContentsMargins(0, 0, 0, 0);
    // The browser's parts are known by the names that its form gives them.
    m_pTypes = m_pBrowser->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    if (auto* pLabel = m_pBrowser->findChild<QLabel*>(QStringLiteral("fileTypeLabel")))
        pLabel->setBuddy(m_pTypes);
    if (auto* pLabel = m_pBrowser->findChild<QLabel*>(QStringLiteral("lookInLabel")))
        pLabel->setBuddy(m_pBrowser->findChild<QWidget*>(QStringLiteral("lookInCombo")));
    m_pBrowser->setDirectory(StartFolder(profile, kind));
    connect(m_pBrowser, &QDialog::accepted, this, [this] {
        m_strTypedPaths.clear();
        accept();
    });
    connect(m_pBrowser, &QDialog::rejected, this, &QDialog::reject);

    auto* pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(c_nDialogMargin, c_nDialogMargin, c_nDialogMargin, c_nDialogMargin);
    pLayout->setSpacing(c_nGroupGap);
    pLayout->addWidget(m_pBrowser, 1);

    const auto look = profile.GetBinary(c_strSection, LookKey(kind));
    if (!look.empty())
        m_pBrowser->restoreState(QByteArray(reinterpret_cast<const char*>(look.data()), static_cast<qsizetype>(look.size())));
    m_pBrowser->setDirectory(StartFolder(profile, kind)); // the look holds a folder of its own
    // The name takes the room that the other columns leave; without this they are cut and there is room to spare.
    if (auto* pTree = m_pBrowser->findChild<QTreeView*>(QStringLiteral("treeView"))) {
        pTree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        pTree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    resize(sizeHint().boundedTo(screen()->availableSize()));
}

QSize CFileDialogFrame::sizeHint() const
{
    return {860, 520};
}

void CFileDialogFrame::SetPane(QWidget* pPane)
{
    static_cast<QHBoxLayout*>(layout())->addWidget(pPane);
}

void CFileDialogFrame::SetFilters(const QList<FileFilter>& filters)
{
    m_filters.clear();
    for (const FileFilter& filter : filters)
        m_filters << filter.strText + QStringLiteral(" (") + filter.strMatch + u')';
    m_pBrowser->setNameFilters(m_filters);
}

int CFileDialogFrame::FilterRow() const
{
    return std::max(0, m_pTypes->currentIndex());
}

void CFileDialogFrame::SetFilterRow(int nRow)
{
    if (nRow >= 0 && nRow < m_filters.size())
        m_pBrowser->selectNameFilter(m_filters[nRow]);
}

void CFileDialogFrame::SetName(const std::filesystem::path& path)
{
    if (!path.empty())
        m_pBrowser->selectFile(QFile::decodeName(path.c_str()));
}

std::vector<std::filesystem::path> CFileDialogFrame::Paths() const
{
    std::vector<std::filesystem::path> paths;
    for (const QString& strPath : m_strTypedPaths.isEmpty() ? m_pBrowser->selectedFiles() : m_strTypedPaths)
        paths.push_back(ToPath(strPath));
    return paths;
}

std::filesystem::path CFileDialogFrame::Path() const
{
    const auto paths = Paths();
    return paths.empty() ? std::filesystem::path{} : paths.front();
}

std::optional<QString> CFileDialogFrame::SetKey(const QString& strKey, const QString& strValue)
{
    if (strKey == u"Filter") {
        bool bNumber = false;
        const int nRow = strValue.toInt(&bNumber);
        if (!bNumber || nRow < 0 || nRow >= m_filters.size())
            return QStringLiteral("there is no filter row \"%1\"").arg(strValue);
        SetFilterRow(nRow);
        return {};
    }
    if (strKey != u"Path")
        return CPaintDialog::SetKey(strKey, strValue);

    // The browser would say in a box of its own what is wrong with a name; here it is the reason of the refusal.
    const QFileInfo info(strValue);
    if (strValue.isEmpty() || info.isDir())
        return QStringLiteral("\"%1\" is no file name").arg(strValue);
    if (m_kind == OpenFiles && !info.exists())
        return QStringLiteral("there is no file \"%1\"").arg(strValue);
    if (m_kind == SaveFile && !info.absoluteDir().exists())
        return QStringLiteral("there is no folder \"%1\"").arg(info.absolutePath());
    if (m_kind == SaveFile)
        m_strTypedPaths.clear();
    m_strTypedPaths << info.absoluteFilePath();
    return {};
}

bool CFileDialogFrame::MayReplace(const QString& strPath)
{
    if (!QFileInfo::exists(strPath))
        return true;
    const QString strText = TextOf(IDS_OVERWRITE) + QDir::toNativeSeparators(strPath);
    return Messages().Message(strText.toStdString(), MessageButtons::YesNo, MessageAnswer::No) == MessageAnswer::Yes;
}

void CFileDialogFrame::accept()
{
    const std::filesystem::path path = Path();
    if (path.empty())
        return;
    const QString strPath = QFile::decodeName(path.c_str());
    // A script that names a file means it, as `cp` does; a person may have overlooked that it exists.
    if (m_kind == SaveFile && !IsDriven() && !MayReplace(CompleteName(strPath))) {
        m_pBrowser->show(); // it has hidden itself in the belief that all is done
        return;
    }
    m_profile.WriteString(c_strSection, FolderKey(m_kind), QFileInfo(strPath).absolutePath().toStdString());
    CPaintDialog::accept();
}

void CFileDialogFrame::showEvent(QShowEvent* pEvent)
{
    CPaintDialog::showEvent(pEvent);
    m_pBrowser->show();
}

void CFileDialogFrame::done(int nResult)
{
    if (isVisible()) {
        const QByteArray look = m_pBrowser->saveState();
        m_profile.WriteBinary(c_strSection, LookKey(m_kind),
                              {reinterpret_cast<const std::uint8_t*>(look.constData()), static_cast<std::size_t>(look.size())});
    }
    CPaintDialog::done(nResult);
}

} // namespace kestrune
