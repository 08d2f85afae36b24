// Option bars, patterns and textures of scripts, through the real program.

#include "ScriptHarness.h"

TEST_F(CScriptTest, OptionsAreTypedIntoTheirBarsAndKept)
{
    const QString strScript = Path("options.txt");
    QFile file(strScript);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("print setting Pencil Opacity\n"
               "option Pencil Opacity 100/4\n"
               "option \"Paint Brush\" \"P Mode\" Multiply\n"
               "option Floater Mode 4\n"
               "option Floater Tolerance 255\n"
               "option Gradient Source 3\n"
               "option Eraser Hard 1\n"
               "option Floater Width 50\noption Floater Style 1\noption Floater Height 60\n");
    file.close();
    const QStringList words{"--settings", Path("settings"), "--script", strScript};
    ScriptRun run = RunProgram(words);
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    EXPECT_EQ(run.out, QStringList{"missing"});

    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("print setting Pencil Opacity\nprint setting \"Paint Brush\" \"P Mode\"\nprint setting Floater Mode\n"
               "print setting Floater Tolerance\nprint setting Eraser Hard\nprint setting Gradient Source\n"
               "print setting Floater Width\nprint setting Floater Height\n");
    file.close();
    run = RunProgram(words);
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    EXPECT_EQ(run.out, (QStringList{"25", "3", "4", "255", "1", "missing", "50", "60"}));
}

TEST_F(CScriptTest, WhatAnOptionsControlRefusesIsAFailedLine)
{
    for (const char* pszLine : {"option Pencil Space 0", "option Pencil Opacity 101", "option Pencil Mode 16", "option Floater Mode 0",
                                "option Floater Mode five", "option Eraser Hard 2", "option Pencil Pressure 5", "option Nothing Opacity 5",
                                "option Pencil Opacity much", "option Floater Width 30001"})
        EXPECT_FALSE(Reason(QString::fromLatin1(pszLine) + u'\n', 1).isEmpty()) << pszLine;
    EXPECT_FALSE(Reason("option Pencil Opacity\n", 1).isEmpty());
}

TEST_F(CScriptTest, PatternsAndTexturesComeFromFiles)
{
    const QString strFolder = QStringLiteral(KESTRUNE_SOURCE_DIR "/install/");
    Output("pattern \"" + strFolder + "Textures/하늘.tif\" 40\npattern none\n"
           "texture \"" + strFolder + "BrushTexture/캔버스.tif\"\ntexture none\n");
    EXPECT_FALSE(Reason("texture missing.tif\n", 1).isEmpty());
    EXPECT_FALSE(Reason("pattern missing.tif 40\n", 1).isEmpty());
    EXPECT_FALSE(Reason("pattern \"" + strFolder + "Textures/하늘.tif\" 101\n", 1).isEmpty());
    EXPECT_FALSE(Reason("pattern none 40\n", 1).isEmpty());
}
