// Which routine stands behind a menu entry, a toolbar button or a key.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace quoril {

/// Commands by the name of their menu entry ("SelectAll_Mnu"; "Open_Mnu_1" for an element of an
/// array). The subsystem that owns a command registers it; the main window shows an entry without
/// a routine as disabled. Toolbar buttons and keys name the menu entry that they stand for.
class CommandTable {
  public:
    using Routine = std::function<void()>;
    void Set(const std::string& Name, Routine What) { Routines[Name] = std::move(What); }
    [[nodiscard]] bool Has(const std::string& Name) const { return Routines.contains(Name); }
    /// Runs a command; nothing happens for a name without a routine.
    void Run(const std::string& Name) const {
        if (const auto Found = Routines.find(Name); Found != Routines.end())
            Found->second();
    }

  private:
    std::map<std::string, Routine> Routines;
};

} // namespace quoril
