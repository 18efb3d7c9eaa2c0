// What a user does with any window, and how tests find its controls.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QString>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

namespace zarvo::testing {

inline constexpr const char* kLockWarning =
    "This module is locked. You must unlock it before attempting to make any changes.";

/// The control of this name, which must be there.
template <typename Control>
Control& Find(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QString::fromLatin1(name));
  if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

/// Waits until the keyboard goes to this window.
inline void Activate(QWidget& window) {
  ASSERT_TRUE(QTest::qWaitFor([&window] {
    if (QApplication::activeWindow() != &window) window.activateWindow();
    return QApplication::activeWindow() == &window;
  })) << window.objectName().toStdString();
}

/// A click where every kind of button takes it.
inline void Click(QWidget& control) {
  ASSERT_TRUE(control.isVisible()) << control.objectName().toStdString();
  ASSERT_TRUE(control.isEnabled()) << control.objectName().toStdString();
  Activate(*control.window());
  QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(8, control.height() / 2));
}

/// Types at the keyboard, one key after the other, into what has the focus.
inline void TypeInto(QWidget& control, const QString& text) {
  ASSERT_TRUE(control.isEnabled()) << control.objectName().toStdString();
  Activate(*control.window());
  control.setFocus(Qt::TabFocusReason);
  ASSERT_EQ(QApplication::focusWidget(), &control) << control.objectName().toStdString();
  QTest::keyClicks(&control, text);
}

inline void SelectAllAndType(QWidget& control, const QString& text) {
  TypeInto(control, {});
  QTest::keyClick(&control, Qt::Key_A, Qt::ControlModifier);
  TypeInto(control, text);
}

/// Does this with the next modal dialog of this kind, which must be closed by it.
template <typename Dialog>
void WithNextDialog(std::function<void(Dialog&)> action) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, action = std::move(action)] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    timer->stop();
    timer->deleteLater();
    Activate(*dialog);
    action(*dialog);
    if (!dialog->isVisible()) return;
    ADD_FAILURE() << "the dialog stayed open";
    dialog->done(QDialog::Rejected);
  });
  timer->start(0);
}

}  // namespace zarvo::testing
