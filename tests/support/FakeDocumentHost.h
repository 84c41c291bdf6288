#pragma once

#include "app/DocumentCommands.h"

#include <QStringList>

#include <map>
#include <optional>

namespace quillon::test {

// The windows as a recording: menu entries by name, the identification
// window's values (loaded from the tables as the real window loads them),
// and the answers of the start dialogs.
class FakeHost final : public DocumentHost {
public:
    FakeHost() { setDocumentHost(this); }
    ~FakeHost() override { setDocumentHost(nullptr); }

    void setMenuState(MenuState s) override
    {
        menu = s;
        for (const MenuEntryState& entry : menuTable())
            entries[QLatin1String(entry.name)] = entryEnabledIn(entry, s);
    }
    void setEntryEnabled(const QString& name, bool enabled) override { entries[name] = enabled; }
    bool isEntryEnabled(const QString& name) const override
    {
        const auto it = entries.find(name);
        return it != entries.end() && it->second;
    }
    void showIdentification() override
    {
        calls << QStringLiteral("identification");
        window = storedIdentification();
    }
    std::optional<Identification> identification() const override { return window; }
    QString closeEditors() override
    {
        calls << QStringLiteral("closeEditors");
        return QString();
    }
    void reopenEditor(const QString& name) override
    {
        calls << QStringLiteral("reopen:") + name;
        if (!window)
            showIdentification();
    }
    void unloadAllWindows() override
    {
        calls << QStringLiteral("unload");
        window.reset();
    }
    void rebuildCaptions(const QString& path) override
    {
        calls << QStringLiteral("captions:") + path;
    }
    void showStartNew() override { calls << QStringLiteral("frmStart_New"); }
    RefreshNotice showStartRefresh() override
    {
        calls << QStringLiteral("frmStartRefresh");
        return refreshNotice;
    }
    int showSaveFile() override
    {
        calls << QStringLiteral("frmSaveFile");
        return saveFileAnswer;
    }
    void setBusy(bool) override { }

    MenuState menu = MenuState::Empty;
    std::map<QString, bool> entries;
    std::optional<Identification> window;
    QStringList calls;
    RefreshNotice refreshNotice;
    int saveFileAnswer = 3;
};

} // namespace quillon::test
