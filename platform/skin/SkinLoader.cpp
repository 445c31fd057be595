// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinLoader.h"

#include <QtCore/QFile>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QAbstractButton>

#include "AppPaths.h"
#include "BkImage.h"
#include "CNumberEdit.h"
#include "CSliderCtrl.h"
#include "Language.h"
#include "Log.h"
#include "SkinIcons.h"

namespace {

class Loader : public QUiLoader {
  public:
    explicit Loader(const ControlFactory& factory) : m_factory(factory) { setLanguageChangeEnabled(false); }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        QWidget* widget = m_factory ? m_factory(className, parent, name) : nullptr;
        if (!widget && className == QLatin1String("CSliderCtrl")) widget = new CSliderCtrl(parent);
        if (!widget && className == QLatin1String("CNumberEdit")) widget = new CNumberEdit(parent);
        if (!widget && className == QLatin1String("CImageBox")) widget = new CImageBox(parent);
        if (!widget) return QUiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }

  private:
    const ControlFactory& m_factory;
};

void ApplyIcon(QAbstractButton* button) {
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
    Loader loader(factory);
    QWidget* root = loader.load(&file, parent);
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
