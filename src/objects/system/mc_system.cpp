#include "objects/system/mc_system.h"

#include <algorithm>
#include <chrono>

#include "files/file.h"
#include "files/path.h"
#include "foundation/random.h"
#include "gfx/window.h"
#include "objects/data/mc_array.h"
#include "platform/platform.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

constexpr const char* kDays[] = {"Niedziela", "Poniedzialek", "Wtorek", "Sroda",
                                 "Czwartek",  "Piatek",       "Sobota"};
constexpr const char* kMonths[] = {"Styczen", "Luty",     "Marzec",   "Kwiecien",    "Maj",      "Czerwiec",
                                   "Lipiec",  "Sierpien", "Wrzesien", "Pazdziernik", "Listopad", "Grudzien"};

struct Calendar {
  int year, month, day, weekDay, hour, minutes, seconds;  // month and day from 1, Sunday is 0
};

Calendar today() {
  using namespace std::chrono;
  const sys_seconds moment{seconds{platform::current().clock().unixSeconds()}};
  const auto date = floor<days>(moment);
  const year_month_day calendar{date};
  const hh_mm_ss time{moment - date};
  return {static_cast<int>(calendar.year()),
          static_cast<int>(static_cast<unsigned>(calendar.month())),
          static_cast<int>(static_cast<unsigned>(calendar.day())),
          static_cast<int>(weekday{date}.c_encoding()),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

Result getDate(CMC_System& /*system*/, Call& /*call*/) {
  const Calendar now = today();
  return Factory::makeInteger(now.year % 100 * 10000 + now.month * 100 + now.day);
}

Result getDateString(CMC_System& /*system*/, Call& /*call*/) {
  const Calendar now = today();
  return Factory::makeString(CXString::Format("%d/%s/%d", now.day, kMonths[now.month - 1], now.year));
}

Result getDay(CMC_System& /*system*/, Call& /*call*/) { return Factory::makeInteger(today().day); }

Result getDayOfWeek(CMC_System& /*system*/, Call& /*call*/) {
  return Factory::makeInteger(today().weekDay + 1);
}

Result getDayOfWeekString(CMC_System& /*system*/, Call& /*call*/) {
  return Factory::makeString(kDays[today().weekDay]);
}

Result getMonth(CMC_System& /*system*/, Call& /*call*/) { return Factory::makeInteger(today().month); }

Result getMonthString(CMC_System& /*system*/, Call& /*call*/) {
  return Factory::makeString(kMonths[today().month - 1]);
}

Result getYear(CMC_System& /*system*/, Call& /*call*/) { return Factory::makeInteger(today().year); }

Result getTimeString(CMC_System& /*system*/, Call& /*call*/) {
  const Calendar now = today();
  return Factory::makeString(CXString::Format("%d:%d", now.hour, now.minutes));
}

Result getHour(CMC_System& /*system*/, Call& /*call*/) { return Factory::makeInteger(today().hour); }

Result getMinutes(CMC_System& /*system*/, Call& /*call*/) { return Factory::makeInteger(today().minutes); }

Result getSeconds(CMC_System& /*system*/, Call& /*call*/) { return Factory::makeInteger(today().seconds); }

Result getSystemTime(CMC_System& /*system*/, Call& /*call*/) {
  return Factory::makeInteger(static_cast<int>(platform::current().clock().ticks()));
}

Result getMhz(CMC_System& /*system*/, Call& /*call*/) {
  return Factory::makeInteger(platform::current().processorMegahertz());
}

// Sleeps in slices, so that a closed window is noticed soon.
Result delay(CMC_System& /*system*/, Call& call) {
  constexpr int kFirstSlice = 50;
  constexpr int kLongestSlice = 1000;
  int slice = kFirstSlice;
  for (int left = call.integer(0); left > 0 && watchdog::ask(); left -= slice) {
    slice = std::min({left, slice * 2, kLongestSlice});
    platform::current().clock().sleep(static_cast<std::uint32_t>(slice));
  }
  return {};
}

Result copyFile(CMC_System& /*system*/, Call& call) {
  CWindow* window = call.scope() != nullptr ? call.scope()->getWindow() : nullptr;
  const CXString from = CPath::resolveFileName(window, call.text(0));
  const CXString to = CPath::resolveFileName(window, call.text(1));
  const bool isCopied = CFile::copy(from, to);
  if (!isCopied && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::file, from.str() + " was not copied to " + to.str());
  return Factory::makeBool(isCopied);
}

constexpr Method kMethods[] = {
    {1, "GETDATE", "-> int", method<getDate>, "The date, UTC, as a number, YYMMDD: 9 March 2005 is 50309."},
    {2, "GETDATESTRING", "-> text", method<getDateString>,
     "The date, UTC, as day/month/year: the month by its Polish name."},
    {3, "GETDAY", "-> int", method<getDay>, "The day of the month, UTC, 1 to 31."},
    {4, "GETDAYOFWEEK", "-> int", method<getDayOfWeek>,
     "The day of the week, UTC, from 1 for Sunday to 7 for Saturday."},
    {5, "GETDAYOFWEEKSTRING", "-> text", method<getDayOfWeekString>,
     "The Polish name of the day of the week, without accents."},
    {6, "GETMONTH", "-> int", method<getMonth>, "The month, UTC, 1 to 12."},
    {7, "GETMONTHSTRING", "-> text", method<getMonthString>,
     "The Polish name of the month, without accents."},
    {8, "GETYEAR", "-> int", method<getYear>, "The year, UTC, with four digits."},
    {9, "GETTIMESTRING", "-> text", method<getTimeString>,
     "The time, UTC, as hours:minutes, without leading zeros."},
    {10, "GETHOUR", "-> int", method<getHour>, "The hour, UTC, 0 to 23."},
    {11, "GETMINUTES", "-> int", method<getMinutes>, "The minute, 0 to 59."},
    {12, "GETSECONDS", "-> int", method<getSeconds>, "The second, 0 to 59."},
    {13, "GETSYSTEMTIME", "-> int", method<getSystemTime>,
     "A clock in milliseconds, to measure how long something takes."},
    {14, "GETMHZ", "-> int", method<getMhz>, "The speed of the processor in megahertz."},
    {15, "DELAY", "milliseconds:int", method<delay>, "Holds the whole game for so many milliseconds."},
    {16, "COPYFILE", "from:file, to:file -> bool", method<copyFile>,
     "Copies a file within the game over the second name; TRUE when it was done."},
};

// RANDOM

Result getRandom(CMC_Object& /*object*/, Call& call) {
  if (!call.has(0)) return Factory::makeInteger(0);
  if (!call.has(1)) return Factory::makeInteger(CXRandom::random(call.integer(0)));
  return Factory::makeInteger(CXRandom::random(call.integer(0), call.integer(1)));
}

Result getPlenty(CMC_Object& /*object*/, Call& call) {
  auto* array = call.named<CMC_Array>(0);
  if (array == nullptr) return {};
  const std::vector<int> numbers =
      CXRandom::random_vector(call.integer(2), call.integer(3), call.integer(1), call.boolean(4));
  if (!array->hasRoom(static_cast<std::int64_t>(numbers.size()))) return {};
  for (const int number : numbers) array->add(CMC_VariableFactory::makeInteger(number).get());
  return {};
}

constexpr Method kRandomMethods[] = {
    {1, "GET", "[low:int], [count:int] -> int", method<getRandom>,
     "A random number: with one argument n of 0 to n - 1, with two of low to low + count - 1, without any "
     "0."},
    {2, "GETPLENTY", "array:name, count:int, low:int, range:int, unique:bool", method<getPlenty>,
     "Adds count random numbers, 10000 at most, of low to low + range - 1 to an ARRAY; with TRUE none comes "
     "twice. A count of 0 means range - low."},
};

}  // namespace

extern constinit const ScriptType kSystemType = {
    .number = type::kSystem,
    .meaning = "The clock, the calendar and the machine; every game has the one object SYSTEM.",
    .signals = kSignalsOfAll,
    .methods = kMethods,
};

extern constinit const ScriptType kRandomType = {
    .number = type::kRandom,
    .idWord = "RANDOM",
    .stringWord = "RANDOM",
    .meaning = "Random numbers; every game has the one object RANDOM.",
    .signals = kSignalsOfAll,
    .methods = kRandomMethods,
};

}  // namespace footlight
