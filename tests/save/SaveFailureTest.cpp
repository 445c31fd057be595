// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/mount.h>
#include <sys/resource.h>

#include <csignal>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStackedWidget>

#include "Language.h"
#include "SaveFixture.h"
#include "TestPictures.h"

// A write that fails: the message comes, the window keeps everything, the old file is whole.
namespace {

const QByteArray Old = "the old file";

void PutOld(const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(Old), Old.size());
}

// No file of this process may grow beyond some bytes while the object lives: what a full disk looks like to a writer.
class SmallFiles {
  public:
    explicit SmallFiles(rlim_t bytes) {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small{bytes, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }

  private:
    rlimit m_limit{};
    void (*m_handler)(int);
};

// A file system of its own with little room; only the superuser may make one.
class TinyDisk {
  public:
    explicit TinyDisk(const QString& folder) : m_folder(folder.toUtf8()) {
        m_mounted = ::mount("tmpfs", m_folder.constData(), "tmpfs", 0, "size=64k") == 0;
    }
    ~TinyDisk() {
        if (m_mounted) ::umount2(m_folder.constData(), MNT_DETACH);
    }
    bool IsMounted() const { return m_mounted; }

  private:
    QByteArray m_folder;
    bool m_mounted = false;
};

class FailingSave : public SaveWindow {
  protected:
    void SetUp() override {
        SaveWindow::SetUp();
        m_request.picture = TestPictures::Noise(400, 300, 7);
        m_target = Folder("target");
    }

    // Saves "name" as .png over the old file with the window, in which the write must fail, and then as told.
    void SaveAndFail(const std::function<void(CSaveWnd&)>& afterwards) {
        m_script
            .On<CSaveWnd>([this](CSaveWnd& window) {
                ChooseType(window, 1);
                TypeInto(window, "EdtPath", m_target);
                TypeInto(window, "EdtName", QStringLiteral("name"));
                Click(window, "BtnSave");
            })
            .On<QMessageBox>([](QMessageBox& box) { Click(box, "BtnYes"); })
            .On<QMessageBox>([](QMessageBox& box) {
                EXPECT_EQ(box.text(), LanguageText(QStringLiteral("ids_msg_saveerror"), QStringLiteral("MessageBox")));
                EXPECT_FALSE(box.text().isEmpty());
                Click(box, "BtnOk");
            })
            .On<CSaveWnd>([=, this](CSaveWnd& window) {
                EXPECT_EQ(Control<QStackedWidget>(window, "TabLaySave").currentIndex(), 0);
                EXPECT_EQ(Control<QLineEdit>(window, "EdtPath").text(), m_target);
                EXPECT_EQ(Control<QLineEdit>(window, "EdtName").text(), QStringLiteral("name"));
                EXPECT_EQ(Control<QComboBox>(window, "ComboFileType").currentIndex(), 1);
                EXPECT_EQ(Clicks("8880601"), 1) << "a failed save is counted too";
                EXPECT_EQ(m_savedCalls, 0);
                EXPECT_EQ(LastSaveFolder(), QString());
                afterwards(window);
            });
    }

    QString m_target;
};

}  // namespace

TEST_F(FailingSave, ADirectoryInTheFilesPlace) {
    ASSERT_TRUE(QDir().mkpath(m_target + QStringLiteral("/name.png/inside")));
    SaveAndFail([](CSaveWnd& window) { Click(window, "BtnSaveClose"); });
    EXPECT_FALSE(Run().written);
    EXPECT_TRUE(QFile::exists(m_target + QStringLiteral("/name.png/inside")));
}

TEST_F(FailingSave, AWriteThatIsCutShortLeavesTheOldFileAndCanBeRepeatedElsewhere) {
    const QString path = m_target + QStringLiteral("/name.png");
    PutOld(path);
    auto limit = std::make_unique<SmallFiles>(32 * 1024);
    const QString other = Folder("other");
    SaveAndFail([&](CSaveWnd& window) {
        limit.reset();
        EXPECT_EQ(FileBytes(path), Old);
        EXPECT_EQ(QDir(m_target).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("name.png")})
            << "no half file stays behind";
        TypeInto(window, "EdtPath", other);
        Click(window, "BtnSave");
        Click(window, "BtnSaveClose");
    });
    const SaveOutcome outcome = Run();
    EXPECT_TRUE(outcome.written);
    EXPECT_EQ(Load(other + QStringLiteral("/name.png")), m_request.picture);
}

TEST_F(FailingSave, AFullDiskLeavesTheOldFile) {
    const TinyDisk disk(m_target);
    if (!disk.IsMounted()) GTEST_SKIP() << "only the superuser can make a small disk";
    const QString path = m_target + QStringLiteral("/name.png");
    PutOld(path);
    SaveAndFail([&](CSaveWnd& window) {
        EXPECT_EQ(FileBytes(path), Old);
        EXPECT_EQ(QDir(m_target).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("name.png")});
        Click(window, "BtnSaveClose");
    });
    EXPECT_FALSE(Run().written);
    EXPECT_EQ(FileBytes(path), Old);
}

TEST_F(FailingSave, AMissingTextLeavesTheBoxEmptyButShown) {
    SetLanguage(QStringLiteral("1033"));
    m_script
        .On<CSaveWnd>([](CSaveWnd& window) {
            SetLanguage(QStringLiteral("0"));
            TypeInto(window, "EdtName", QString());
            Click(window, "BtnSave");
        })
        .On<QMessageBox>([](QMessageBox& box) {
            EXPECT_EQ(box.text(), QString());
            Click(box, "BtnOk");
        })
        .On<CSaveWnd>([](CSaveWnd& window) { Click(window, "BtnSaveClose"); });
    Run();
}
