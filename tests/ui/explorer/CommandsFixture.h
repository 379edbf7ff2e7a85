#pragma once

#include "fakes/FakeShell.h"
#include "ui/explorer/ExplorerWindowFixture.h"

#include <QLineEdit>
#include <QPointer>

/// The main window on drive E:, with a clipboard and a properties viewer of the test's own.
class CommandsWindow : public ExplorerWindow {
  protected:
    /// Opens the window with the folder `key` shown.
    void OpenAt(const std::string& key) {
        Open();
        for (std::size_t end = key.find('\\') + 1; end != std::string::npos;) {
            ClickNode(key.substr(0, end));
            const std::size_t next = key.find('\\', end + 1);
            end = end >= key.size() ? std::string::npos : std::min(next, key.size());
        }
    }

    /// Types a name into the editor that is open in `view`, and waits until that has been dealt with.
    void TypeName(QTreeView& view, const QString& name) {
        const QPointer<QLineEdit> editor = view.viewport()->findChild<QLineEdit*>();
        ASSERT_FALSE(editor.isNull());
        editor->selectAll();
        QTest::keyClicks(editor, name);
        QTest::keyClick(editor, Qt::Key_Return);
        // The editor goes first; the name is changed when messages run next.
        ASSERT_TRUE(QTest::qWaitFor([&] { return editor.isNull(); }));
        QCoreApplication::processEvents();
    }

    void Answer(int answer) { messages_.answers.push_back(answer); }

    fakes::FakeClipboard clipboard_;
    fakes::FakeProperties properties_;
};
