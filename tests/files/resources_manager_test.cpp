#include "files/resources_manager.h"

#include <gtest/gtest.h>

namespace footlight {
namespace {

class Resource : public CFileResolver {
 public:
  Resource(const char* name, std::string* log) : log_(log) { setFilename(name); }
  ~Resource() override { *log_ += "-" + getFileName().str(); }
  void retire() override { *log_ += "r"; }

 private:
  std::string* log_;
};

TEST(ResourcesManager, CountsUsersAndEndsWithTheLast) {
  std::string log;
  CResourcesManager manager(nullptr);
  auto* resource = new Resource("Dir\\A.img", &log);
  manager.add(resource);
  EXPECT_EQ(manager.get("dir\\a.IMG"), resource);
  EXPECT_EQ(manager.get("a.img"), nullptr);
  EXPECT_TRUE(manager.remove(resource));
  EXPECT_EQ(log, "");
  EXPECT_TRUE(manager.remove(resource));
  EXPECT_EQ(log, "r-Dir\\A.img");
  EXPECT_FALSE(manager.remove(resource));
}

TEST(ResourcesManager, SearchesChildrenAndFlushesThemFirst) {
  std::string log;
  CResourcesManager general(nullptr);
  CResourcesManager first(nullptr);
  CResourcesManager second(nullptr);
  general.add(&first);
  general.add(&second);
  first.add(&general);  // no circles
  general.add(new Resource("g", &log));
  auto* shared = new Resource("x", &log);
  first.add(shared);
  second.add(new Resource("x", &log));
  EXPECT_EQ(general.get("X"), shared);
  EXPECT_EQ(first.get("g"), nullptr);
  EXPECT_TRUE(general.remove(shared));
  EXPECT_TRUE(first.contains(shared));
  general.flush();
  EXPECT_EQ(log, "-x-x-g");
  second.add(new Resource("late", &log));
  EXPECT_EQ(general.get("late"), nullptr);
}

TEST(ResourcesManager, ForgetsWhatEndsElsewhere) {
  std::string log;
  auto manager = std::make_unique<CResourcesManager>(nullptr);
  {
    Resource local("local", &log);
    manager->add(&local);
  }
  EXPECT_EQ(manager->get("local"), nullptr);
  auto child = std::make_unique<CResourcesManager>(nullptr);
  manager->add(child.get());
  child->add(new Resource("c", &log));
  child.reset();
  EXPECT_EQ(log, "-local-c");
  EXPECT_EQ(manager->get("c"), nullptr);
}

}  // namespace
}  // namespace footlight
