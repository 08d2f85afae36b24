#pragma once

#include "tools/gui/OptionTable.h"

#include <QObject>

#include <filesystem>
#include <map>

class QWidget;

namespace kestrune {

class CNumEdit;
class COptionPage;
class CTextureBox;

/// The option bars of all tools. Each is made when it is first needed, so that the start does not wait for them. While this
/// lives it listens to the settings, and every bar follows a change, whoever made it.
class CToolOptionPages : public QObject {
    Q_OBJECT
public:
    /// Pages are made as children of `pParent`.
    CToolOptionPages(const std::filesystem::path& pathInstall, QWidget* pParent);
    ~CToolOptionPages() override;

    /// The bar of that tool, showing what it has for it. The same widget for every tool of a family.
    QWidget* PageOf(const ToolRow& tool, int nCommand);
    /// The control through which a setting is changed; null for a setting without one.
    QObject* Control(ToolOption option);

    CTextureBox& TextureBox() const { return *m_pTextureBox; }
    CTextureBox& PatternBox() const { return *m_pPatternBox; }
    /// The number box of the pattern's percent.
    CNumEdit& PatternPercent();

Q_SIGNALS:
    /// The user is done with a control: the keyboard goes back to the picture.
    void Done();

private:
    COptionPage& Page(ToolBar bar);

    QWidget* m_pParent;
    CTextureBox* m_pTextureBox;
    CTextureBox* m_pPatternBox;
    std::map<ToolBar, COptionPage*> m_mapPages;
};

} // namespace kestrune
