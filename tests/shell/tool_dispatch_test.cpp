#include "shell/tool_dispatch.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace orvik::shell {
namespace {

TEST(ToolDispatchTest, EveryKeyAppearsOnceInAKnownMenuGroup) {
  const std::set<std::string_view> groups = {"mnuFile", "mnuEdit",   "mnuTool",  "mnuGraph",
                                             "mnuAnalysis", "mnuView", "mnuWindow", "mnuHelp"};
  std::set<std::string_view> keys;
  for (const auto& command : ToolCommands()) {
    EXPECT_TRUE(keys.insert(command.key).second) << command.key << " twice";
    EXPECT_TRUE(command.key.starts_with("mnu")) << command.key;
    EXPECT_EQ(groups.count(command.menu), 1u) << command.key << " in " << command.menu;
    EXPECT_FALSE(command.caption.empty()) << command.key;
  }
  // The dispatcher tests 100 keys, "mnuNew" twice.
  EXPECT_EQ(keys.size(), 99u);
}

TEST(ToolDispatchTest, FindsKeysExactly) {
  ASSERT_NE(FindToolCommand("mnuBarX-R"), nullptr);
  EXPECT_EQ(FindToolCommand("mnuBarX-R")->menu, "mnuAnalysis");
  EXPECT_EQ(FindToolCommand("mnuHistogram")->scope, CommandScope::Core);
  EXPECT_EQ(FindToolCommand("mnuCut")->scope, CommandScope::Window);
  EXPECT_EQ(FindToolCommand("mnubarx-r"), nullptr);
  EXPECT_EQ(FindToolCommand("mnuNoSuchKey"), nullptr);
  EXPECT_EQ(FindToolCommand(""), nullptr);
}

TEST(ToolDispatchTest, WindowCommandsHaveNoCoreProcedure) {
  for (const auto& command : ToolCommands())
    if (command.scope == CommandScope::Window) {
      EXPECT_EQ(command.run, nullptr) << command.key;
    }
}

TEST(DialogCatalogTest, NamesAreUniqueAndMatchTheDialogsTheyMake) {
  std::set<std::string_view> names;
  for (const auto& entry : DialogCatalog()) {
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
    EXPECT_EQ(entry.make()->Name(), entry.name);
    EXPECT_EQ(FindDialog(entry.name), &entry);
  }
  EXPECT_EQ(FindDialog("NoSuchForm"), nullptr);
}

}  // namespace
}  // namespace orvik::shell
