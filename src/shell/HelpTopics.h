// The topics of the help: their numbers and pages, and what each part of the windows leads to.
#pragma once

#include <string>
#include <vector>

namespace quoril {

/// The topics that code names; the others are reached by the name of a control.
inline constexpr int HelpOverview = 1;
inline constexpr int HelpGettingStarted = 2;
inline constexpr int HelpMouseAndSelection = 3;
inline constexpr int HelpKeys = 4;

/// A topic: its context number, and its page with the place on it ("view.html#zoom-in").
struct HelpTopic {
    int Number = 0;
    const char* Page = "";
};

/// A menu entry, menu, window, panel or other control, and the number of its topic. The name of an
/// array ("Format_FrQ_Menu") stands for its elements that have no row of their own.
struct HelpPlace {
    const char* Control = "";
    int Number = 0;
};

/// All topics, by rising number.
[[nodiscard]] const std::vector<HelpTopic>& HelpTopics();
/// What has a topic. A menu entry without a row has the topic of its menu.
[[nodiscard]] const std::vector<HelpPlace>& HelpPlaces();

/// The page of a topic; that of the overview for a number that no topic has.
[[nodiscard]] std::string HelpPageOf(int Number);
/// The topic of a control by its name; 0 when neither it, nor its array, nor a menu that it stands
/// in has one.
[[nodiscard]] int HelpContextOf(const std::string& Control);

} // namespace quoril
