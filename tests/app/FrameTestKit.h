#pragma once

#include "app/ChildFrame.h"
#include "app/CommandTable.h"
#include "app/MainFrame.h"
#include "app/PaintApp.h"
#include "app/SettingsProfile.h"
#include "base/Messages.h"
#include "view/PaintView.h"

#include <QApplication>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <memory>

namespace kestrune {

/// Notes what is said, and answers questions from a list; the default where the list is empty.
struct CNotingSink : CMessageSink {
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_said.push_back(strText);
        if (m_answers.empty())
            return nDefault;
        const MessageAnswer nAnswer = m_answers.front();
        m_answers.pop_front();
        return nAnswer;
    }
    void StatusText(const std::string& strText) override { m_status.push_back(strText); }
    std::vector<std::string> m_said, m_status;
    std::deque<MessageAnswer> m_answers;
};

/// The program on the offscreen platform, with its settings in a folder that outlives it.
class CFrameTest : public testing::Test {
protected:
    void Start()
    {
        m_pApp = std::make_unique<CPaintApp>(std::make_unique<CSettingsProfile>(Settings()));
        m_pApp->SetInstallFolder(KESTRUNE_SOURCE_DIR "/install");
        ASSERT_TRUE(m_pApp->InitInstance(true));
        SetMessageSink(&m_sink);
        QCoreApplication::processEvents();
    }
    /// Ends the program as its exit command does, and starts it anew.
    void Restart()
    {
        Exit();
        Start();
    }
    void Exit()
    {
        m_pApp->ExecuteCommand(ID_APP_EXIT);
        m_pApp.reset();
        SetMessageSink(&m_sink);
    }
    void SetUp() override { Start(); }
    void TearDown() override
    {
        m_pApp.reset();
        SetMessageSink(nullptr);
    }

    std::filesystem::path Folder() const { return m_folder.path().toStdString(); }
    std::filesystem::path Settings() const { return Folder() / "settings.ini"; }
    CMainFrame& Frame() const { return m_pApp->MainFrame(); }

    /// A new white picture.
    CChildFrame& NewPicture(int nWidth = 64, int nHeight = 48)
    {
        DocumentBirth birth;
        birth.kind = DocumentBirth::FromSize;
        birth.size = {nWidth, nHeight};
        EXPECT_TRUE(m_pApp->NewDocument(birth));
        return *m_pApp->ActiveChild();
    }
    std::filesystem::path PictureFile(const std::string& strName, int nWidth = 40, int nHeight = 30) const
    {
        QImage image(nWidth, nHeight, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        const std::filesystem::path path = Folder() / strName;
        EXPECT_TRUE(image.save(QString::fromStdString(path.string())));
        return std::filesystem::canonical(path);
    }

    QTemporaryDir m_folder;
    CNotingSink m_sink;
    std::unique_ptr<CPaintApp> m_pApp;
};

} // namespace kestrune
