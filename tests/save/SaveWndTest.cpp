// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSaveWnd.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImage>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>

#include "AppPaths.h"
#include "Language.h"
#include "SaveFixture.h"
#include "TestPictures.h"

namespace {

QString Text(const QWidget& window, const char* name) {
    return Control<QLineEdit>(window, name).text();
}

int PageOf(const QWidget& window) {
    return Control<QStackedWidget>(window, "TabLaySave").currentIndex();
}

bool Enabled(const QWidget& window, const char* name) {
    return Control(window, name).isEnabled();
}

QString Message(const char* key, const char* section) {
    const QString text = LanguageText(QLatin1String(key), QLatin1String(section));
    EXPECT_FALSE(text.isEmpty()) << key;
    return text;
}

// A message with one button and this text; answers it.
void ReadMessage(QMessageBox& box, const QString& text) {
    EXPECT_EQ(box.text(), text);
    EXPECT_EQ(box.windowTitle(), AppTitle());
    EXPECT_EQ(box.buttons().size(), 1);
    Click(box, "BtnOk");
}

}  // namespace

TEST_F(SaveWindow, OpensWithTheDefaultFolderAndACopysName) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        EXPECT_EQ(Text(window, "EdtPath"), Documents());
        EXPECT_TRUE(QFileInfo(Documents()).isDir());
        EXPECT_EQ(Text(window, "EdtName"), QStringLiteral("portrait_copy"));
        EXPECT_EQ(PageOf(window), 0);
        EXPECT_EQ(Control<QLineEdit>(window, "EdtName").selectedText(), QStringLiteral("portrait_copy"));
        EXPECT_FALSE(Control(window, "HorLayHuaZhi").isVisible());
        Click(window, "BtnSaveClose");
    });
    const SaveOutcome outcome = Run();
    EXPECT_EQ(outcome.result, ResultClose);
    EXPECT_FALSE(outcome.written);
}

TEST_F(SaveWindow, TypesAreTheSuffixesAndTheFirstHasAQuality) {
    m_request.sourcePath = Folder("pictures") + QStringLiteral("/portrait.png");
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        const auto& combo = Control<QComboBox>(window, "ComboFileType");
        ASSERT_EQ(combo.count(), 3);
        EXPECT_EQ(combo.itemText(0), QStringLiteral(".jpg"));
        EXPECT_EQ(combo.itemText(1), QStringLiteral(".png"));
        EXPECT_EQ(combo.itemText(2), QStringLiteral(".bmp"));
        EXPECT_EQ(combo.currentIndex(), 0) << "opening a .png leaves the skin's choice";
        EXPECT_TRUE(Enabled(window, "BtnSaveHuaZhi"));
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, LiesOverTheMiddleOfItsOwnerWithRoundCorners) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        const QPoint offset = window.frameGeometry().center() - m_owner.frameGeometry().center();
        EXPECT_LE(offset.manhattanLength(), 4);
        EXPECT_FALSE(window.mask().contains(QPoint(0, 0)));
        EXPECT_TRUE(window.mask().contains(window.rect().center()));
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, IsNotShownWithoutAPicture) {
    m_request.picture = {};
    EXPECT_EQ(Run().result, ResultClose);
}

TEST_F(SaveWindow, EveryControlIsThereInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        m_script.On<CSaveWnd>([&](CSaveWnd& window) {
            for (const char* name : {"BtnSaveClose", "BtnSave", "BtnSaveModify", "BtnSaveHuaZhi", "BtnFaceBook",
                                     "BtnTwitter", "BtnSaveExif", "EdtPath", "EdtName", "BtnCover", "ComboFileType",
                                     "HorLayHuaZhi", "SliderHuaZhi", "TextSaveHuaZhiVal", "TextSaveSizeVal",
                                     "ConShowImage", "TabLaySave", "BtnSaveOpenFile", "BtnSaveOpenPath"})
                EXPECT_NE(window.findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
            for (const char* name :
                 {"BtnSaveClose", "BtnSave", "EdtPath", "EdtName", "ComboFileType", "SliderHuaZhi"}) {
                EXPECT_FALSE(Control(window, name).accessibleName().isEmpty()) << name;
                EXPECT_FALSE(Control(window, name).toolTip().isEmpty()) << name;
            }
            Click(window, "BtnSaveClose");
        });
        Run();
    }
}

TEST_F(SaveWindow, ThumbnailIsWrittenAsPngAndShown) {
    const QString file = AppPath(QStringLiteral("Temp/SaveTempThumb.jpg"));
    for (const std::uint32_t colour : {0xFFCC2020u, 0xFF2020CCu}) {
        m_request.picture = TestPictures::Plain(600, 400, colour);
        m_script.On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_TRUE(IsPng(file));
            EXPECT_EQ(QImage(file).size(), QSize(180, 120) * window.devicePixelRatioF());
            auto& preview = Control(window, "ConShowImage");
            EXPECT_EQ(preview.property("bkimage").toString(),
                      QStringLiteral("file='%1' dest='0,10,180,130' ").arg(file));
            EXPECT_EQ(preview.grab().toImage().pixelColor(preview.rect().center()).rgb(), colour);
            Click(window, "BtnSaveClose");
        });
        Run();
    }
}

TEST_F(SaveWindow, SaveWritesTheFileAndTurnsToTheSecondPage) {
    const QString path = Documents() + QStringLiteral("/portrait_copy.jpg");
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSave");
        EXPECT_EQ(PageOf(window), 1);
        EXPECT_TRUE(IsJpeg(path));
        EXPECT_EQ(LastSaveFolder(), Documents());
        EXPECT_EQ(Clicks("8880601"), 1);
        Click(window, "BtnSaveClose");
    });
    const SaveOutcome outcome = Run();
    EXPECT_TRUE(outcome.written);
    EXPECT_EQ(outcome.path, path);
    EXPECT_EQ(outcome.result, ResultClose);
    EXPECT_EQ(m_savedCalls, 1);
    EXPECT_LE(TestPictures::LargestDifference(Load(path), m_request.picture), 40);
}

TEST_F(SaveWindow, EachTypeWritesItsOwnFormat) {
    const char* suffixes[] = {".jpg", ".png", ".bmp"};
    for (int index = 0; index < 3; ++index) {
        const QString path = Documents() + QStringLiteral("/portrait_copy") + QLatin1String(suffixes[index]);
        m_script.On<CSaveWnd>([&](CSaveWnd& window) {
            ChooseType(window, index);
            Click(window, "BtnSave");
            Click(window, "BtnSaveClose");
        });
        EXPECT_EQ(Run().path, path);
        EXPECT_EQ(IsJpeg(path), index == 0);
        EXPECT_EQ(IsPng(path), index == 1);
        EXPECT_EQ(IsBmp(path), index == 2);
        if (index > 0) {
            EXPECT_EQ(Load(path), m_request.picture) << "lossless types keep every pixel";
        }
    }
}

TEST_F(SaveWindow, AMissingFolderIsToldFirstAndNothingIsCounted) {
    m_script
        .On<CSaveWnd>([&](CSaveWnd& window) {
            TypeInto(window, "EdtPath", m_home.filePath(QStringLiteral("nowhere")));
            TypeInto(window, "EdtName", QStringLiteral("a*b"));
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([](QMessageBox& box) { ReadMessage(box, Message("ids_msg_pathinvaild", "SaveWnd")); })
        .On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_EQ(window.focusWidget(), &Control(window, "EdtPath"));
            EXPECT_EQ(Text(window, "EdtName"), QStringLiteral("a*b"));
            TypeInto(window, "EdtPath", QString());
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([](QMessageBox& box) { ReadMessage(box, Message("ids_msg_pathinvaild", "SaveWnd")); })
        .On<CSaveWnd>([&](CSaveWnd& window) { Click(window, "BtnSaveClose"); });
    EXPECT_FALSE(Run().written);
    EXPECT_EQ(Clicks("8880601"), 0);
}

TEST_F(SaveWindow, AnInvalidNameIsToldAndNothingIsCounted) {
    for (const char* name : {"", "a/b", "a\\b", "a:b", "a*b", "a?b", "a\"b", "a<b", "a>b", "a|b", ".", ".."}) {
        m_script
            .On<CSaveWnd>([=](CSaveWnd& window) {
                TypeInto(window, "EdtName", QLatin1String(name));
                Click(window, "BtnSave");
            })
            .On<QMessageBox>([](QMessageBox& box) { ReadMessage(box, Message("ids_msg_fileinvaild", "SaveWnd")); })
            .On<CSaveWnd>([=](CSaveWnd& window) {
                EXPECT_EQ(window.focusWidget(), &Control(window, "EdtName"));
                EXPECT_EQ(PageOf(window), 0);
                Click(window, "BtnSaveClose");
            });
        EXPECT_FALSE(Run().written) << name;
    }
    EXPECT_EQ(Clicks("8880601"), 0);
    EXPECT_TRUE(QDir(Documents()).isEmpty());
}

TEST_F(SaveWindow, ANameWithADotIsValid) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        TypeInto(window, "EdtName", QStringLiteral("v1.2 final"));
        Click(window, "BtnSave");
        Click(window, "BtnSaveClose");
    });
    EXPECT_EQ(Run().path, Documents() + QStringLiteral("/v1.2 final.jpg"));
}

TEST_F(SaveWindow, AFolderThatEndsInASlashIsFine) {
    const QString folder = Folder("other");
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        TypeInto(window, "EdtPath", folder + QStringLiteral("/"));
        Click(window, "BtnSave");
        Click(window, "BtnSaveClose");
    });
    EXPECT_TRUE(Run().written);
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("/portrait_copy.jpg")));
}

TEST_F(SaveWindow, AnExistingFileIsReplacedOnlyAfterYes) {
    ASSERT_TRUE(QDir().mkpath(Documents()));
    const QString path = Documents() + QStringLiteral("/portrait_copy.jpg");
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    const auto ask = [&](QMessageBox& box) {
        EXPECT_EQ(box.text(), Message("ids_msg_fileexist", "MessageBox"));
        EXPECT_EQ(box.buttons().size(), 2);
    };
    m_script.On<CSaveWnd>([](CSaveWnd& window) { Click(window, "BtnSave"); })
        .On<QMessageBox>([=](QMessageBox& box) {
            ask(box);
            Click(box, "BtnNo");
        })
        .On<CSaveWnd>([=](CSaveWnd& window) {
            EXPECT_EQ(FileBytes(path), QByteArray("old"));
            EXPECT_EQ(PageOf(window), 0);
            EXPECT_EQ(Clicks("8880601"), 0);
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); })
        .On<CSaveWnd>([=](CSaveWnd& window) {
            EXPECT_EQ(FileBytes(path), QByteArray("old"));
            EXPECT_EQ(Clicks("8880601"), 0);
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([=](QMessageBox& box) { Click(box, "BtnYes"); })
        .On<CSaveWnd>([=](CSaveWnd& window) {
            EXPECT_EQ(PageOf(window), 1);
            EXPECT_EQ(Clicks("8880601"), 1);
            Click(window, "BtnSaveClose");
        });
    EXPECT_TRUE(Run().written);
    EXPECT_TRUE(IsJpeg(path));
}

TEST_F(SaveWindow, CoverIsOfferedForThreeSuffixesOnly) {
    const struct {
        const char* name;
        bool offered;
    } rows[] = {{"a.jpg", true},   {"a.JPG", true},  {"a.png", true},  {"a.bmp", true},
                {"a.jpeg", false}, {"a.gif", false}, {"a.tif", false}, {"a", false}};
    for (const auto& row : rows) {
        m_request.sourcePath = Folder("pictures") + u'/' + QLatin1String(row.name);
        m_script.On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_EQ(Enabled(window, "BtnCover"), row.offered) << row.name;
            Click(window, "BtnSaveClose");
        });
        Run();
    }
    m_request.sourcePath = AppPath(QStringLiteral("Temp/default.jpg"));
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        EXPECT_FALSE(Enabled(window, "BtnCover"));
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, CoverShowsTheSourceAndHoldsTheFields) {
    m_request.sourcePath = Folder("pictures") + QStringLiteral("/portrait.PNG");
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        const auto& combo = Control<QComboBox>(window, "ComboFileType");
        TypeInto(window, "EdtName", QStringLiteral("mine"));
        Click(window, "BtnSaveHuaZhi");
        EXPECT_TRUE(Control(window, "HorLayHuaZhi").isVisible());
        Click(window, "BtnCover");
        EXPECT_EQ(Text(window, "EdtPath"), Folder("pictures"));
        EXPECT_EQ(Text(window, "EdtName"), QStringLiteral("portrait"));
        EXPECT_EQ(combo.currentText(), QStringLiteral(".png"));
        for (const char* name : {"EdtPath", "EdtName", "BtnSaveModify", "ComboFileType", "BtnSaveHuaZhi"})
            EXPECT_FALSE(Enabled(window, name)) << name;
        EXPECT_FALSE(Control(window, "HorLayHuaZhi").isVisible());
        Click(window, "BtnCover");
        EXPECT_EQ(Text(window, "EdtPath"), Documents());
        EXPECT_EQ(Text(window, "EdtName"), QStringLiteral("mine"));
        EXPECT_EQ(combo.currentText(), QStringLiteral(".png")) << "the type stays on the source's";
        for (const char* name : {"EdtPath", "EdtName", "BtnSaveModify", "ComboFileType"})
            EXPECT_TRUE(Enabled(window, name)) << name;
        EXPECT_EQ(Clicks("8880602"), 2);
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, CoveringWritesTheSourcesFormatWithoutAQuestion) {
    const QString folder = Folder("pictures");
    for (const char* name : {"a.png", "B.PNG", "c.jpg", "D.JPG"}) {
        const QString path = folder + u'/' + QLatin1String(name);
        OpenSource(path);
        m_script.On<CSaveWnd>([&](CSaveWnd& window) {
            Click(window, "BtnCover");
            Click(window, "BtnSave");
            EXPECT_EQ(PageOf(window), 1);
            Click(window, "BtnSaveClose");
        });
        EXPECT_EQ(Run().path, path);
        EXPECT_EQ(IsPng(path), path.toLower().endsWith(QLatin1String(".png"))) << name;
        EXPECT_EQ(IsJpeg(path), path.toLower().endsWith(QLatin1String(".jpg"))) << name;
        EXPECT_EQ(Load(path).Width(), m_request.picture.Width());
        EXPECT_EQ(LastSaveFolder(), folder);
        SetLastSaveFolder({});
    }
    EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 4) << "no second file beside a name in capitals";
}

TEST_F(SaveWindow, CoveringALargerPictureAsksFirst) {
    const QString path = Folder("pictures") + QStringLiteral("/a.png");
    OpenSource(path);
    const QByteArray before = FileBytes(path);
    m_request.sourceIsLarger = true;
    m_script
        .On<CSaveWnd>([](CSaveWnd& window) {
            Click(window, "BtnCover");
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([](QMessageBox& box) {
            EXPECT_EQ(box.text(), Message("ids_msg_fileexist", "MessageBox"));
            Click(box, "BtnNo");
        })
        .On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_EQ(FileBytes(path), before);
            EXPECT_EQ(PageOf(window), 0);
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([](QMessageBox& box) { Click(box, "BtnYes"); })
        .On<CSaveWnd>([](CSaveWnd& window) {
            EXPECT_EQ(PageOf(window), 1);
            Click(window, "BtnSaveClose");
        });
    EXPECT_EQ(Run().path, path);
    EXPECT_EQ(Load(path), m_request.picture);
}

TEST_F(SaveWindow, SecondWindowOffersTheFolderOfTheFirstSave) {
    const QString other = Folder("other");
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        TypeInto(window, "EdtPath", other);
        Click(window, "BtnSave");
        Click(window, "BtnSaveClose");
    });
    ASSERT_TRUE(Run().written);
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        EXPECT_EQ(Text(window, "EdtPath"), other);
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, ClosingAfterTheSaveEndsWithYesAndKeepsTheOldFolder) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) { Click(window, "BtnSave"); });
    const SaveOutcome outcome = Run(AfterSave::CloseWindow);
    EXPECT_EQ(outcome.result, ResultYes);
    EXPECT_TRUE(outcome.written);
    EXPECT_EQ(LastSaveFolder(), QString());
    EXPECT_EQ(Clicks("8880601"), 1);
}

TEST_F(SaveWindow, EnterSavesAndEscCloses) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(PageOf(window), 1);
        QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    });
    const SaveOutcome outcome = Run();
    EXPECT_TRUE(outcome.written);
    EXPECT_EQ(outcome.result, ResultClose);
    m_script.On<CSaveWnd>([&](CSaveWnd& window) { QTest::keyClick(window.focusWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(Run().written);
}

TEST_F(SaveWindow, EveryControlOfTheFormIsReachedByTab) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        QStringList reached;
        for (int i = 0; i < 12; ++i) {
            reached << window.focusWidget()->objectName();
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        }
        for (const char* name : {"EdtPath", "BtnSaveModify", "EdtName", "ComboFileType", "BtnSaveHuaZhi", "BtnCover",
                                 "BtnSave", "BtnSaveClose"})
            EXPECT_TRUE(reached.contains(QLatin1String(name))) << name;
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, TheFolderBrowserPutsItsChoiceIntoTheField) {
    const QString other = Folder("other");
    const auto choose = [&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), Message("ids_savetitle", "Language"));
        EXPECT_EQ(dialog.directory().absolutePath(), Documents()) << "it starts at the field's folder";
        // Typed letter by letter the name would raise the dialog's list of completions.
        Control<QLineEdit>(dialog, "fileNameEdit").setText(other);
        const auto& buttons = Control<QDialogButtonBox>(dialog, "buttonBox");
        QTest::mouseClick(buttons.button(QDialogButtonBox::Open), Qt::LeftButton);
    };
    m_script.On<CSaveWnd>([&](CSaveWnd& window) { Click(window, "BtnSaveModify"); })
        .On<QFileDialog>(choose)
        .On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_EQ(Text(window, "EdtPath"), other);
            Click(window, "BtnSaveModify");
        })
        .On<QFileDialog>([&](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); })
        .On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_EQ(Text(window, "EdtPath"), other) << "a cancelled browser changes nothing";
            Click(window, "BtnSaveClose");
        });
    Run();
}
