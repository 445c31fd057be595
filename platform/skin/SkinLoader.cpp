// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinLoader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QAbstractButton>
#include <vector>

#include "AppPaths.h"
#include "BkImage.h"
#include "CNumberEdit.h"
#include "CSliderCtrl.h"
#include "Language.h"
#include "Log.h"
#include "SkinIcons.h"

namespace {

// A QUiLoader loads every plug-in of Qt Designer as it is made, and with them Qt Quick and its whole engine where that
// is installed. No skin has a control of theirs. They are looked for below the library paths, which are therefore empty
// for that moment; only the loaders below are made so, the first ones before there is another thread that could look
// for a plug-in.
class WithoutPlugins {
  protected:
    WithoutPlugins() : m_paths(QCoreApplication::libraryPaths()) { QCoreApplication::setLibraryPaths({}); }
    void Restore() { QCoreApplication::setLibraryPaths(m_paths); }

  private:
    QStringList m_paths;
};

class Loader : private WithoutPlugins, public QUiLoader {
  public:
    explicit Loader(QObject* parent) : QUiLoader(parent) {
        Restore();
        setLanguageChangeEnabled(false);
    }

    QWidget* Load(QIODevice* skin, QWidget* parent, const ControlFactory& factory) {
        m_factory = &factory;
        return load(skin, parent);
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        QWidget* widget = *m_factory ? (*m_factory)(className, parent, name) : nullptr;
        if (!widget && className == QLatin1String("CSliderCtrl")) widget = new CSliderCtrl(parent);
        if (!widget && className == QLatin1String("CNumberEdit")) widget = new CNumberEdit(parent);
        if (!widget && className == QLatin1String("CImageBox")) widget = new CImageBox(parent);
        if (!widget) return QUiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }

  private:
    const ControlFactory* m_factory = nullptr;
};

// A control of a skin may be a window with a skin of its own, which is loaded meanwhile: one loader for each depth,
// kept by the application. Main thread.
class Depth {
  public:
    Depth() { ++s_depth; }
    ~Depth() { --s_depth; }
    Loader& Own() const {
        static std::vector<QPointer<Loader>> loaders;
        if (loaders.size() < s_depth) loaders.resize(s_depth);
        QPointer<Loader>& loader = loaders[s_depth - 1];
        if (!loader) loader = new Loader(QCoreApplication::instance());
        return *loader;
    }

  private:
    static inline std::size_t s_depth = 0;
};

void ApplyIcon(QAbstractButton* button) {
    // The controls of a skin within this one have theirs already.
    if (!button->icon().isNull()) return;
    const QString name = button->property("iconName").toString();
    if (name.isEmpty()) return;
    const bool primary = button->property("role").toString() == QLatin1String("primary");
    button->setIcon(primary ? SkinIcon(name, Qt::white) : SkinIcon(name));
}

// Screen readers and tests find what a button without a text is for.
void NameForAccess(QWidget* control) {
    if (!control->accessibleName().isEmpty()) return;
    const auto* button = qobject_cast<QAbstractButton*>(control);
    const QString text = button && !button->text().isEmpty() ? button->text() : control->toolTip();
    if (!text.isEmpty()) control->setAccessibleName(text);
}

}  // namespace

QWidget* LoadSkin(const QString& name, QWidget* parent, const ControlFactory& factory) {
    QFile file(ResourcePath(LanguageDirName() + QLatin1Char('/') + name));
    if (!file.open(QIODevice::ReadOnly)) {
        Log("[QUINCE]skin missing: %s", qPrintable(file.fileName()));
        return nullptr;
    }
    const Depth depth;
    Loader& loader = depth.Own();
    QWidget* root = loader.Load(&file, parent, factory);
    if (!root) {
        Log("[QUINCE]skin damaged: %s: %s", qPrintable(file.fileName()), qPrintable(loader.errorString()));
        return nullptr;
    }
    for (QWidget* control : root->findChildren<QWidget*>()) {
        if (auto* button = qobject_cast<QAbstractButton*>(control)) ApplyIcon(button);
        NameForAccess(control);
    }
    return root;
}
