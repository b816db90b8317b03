#include <velum/core/Exception.h>
#include <velum/core/IError.h>
#include <velum/core/IHelp.h>
#include <velum/core/StandardErrors.h>
#include <velum/core/SystemError.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <exception>
#include <thread>

namespace vlm {
namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;

template <class... Arguments>
Exception Raised(int code, Arguments... arguments) {
  try {
    ThrowErrorImpl("Some.cpp", 12, code, arguments...);
  } catch (const Exception& error) {
    return error;
  }
}

TEST(ThrowErrorImpl, FillsTheMessageOfEachCode) {
  struct Row {
    int code;
    const char* message;
  };
  // All arguments are given to each; a message takes those that it has places for.
  const Row texts[] = {
      {ERR_OUT_OF_MEMORY, "Out of global memory"},
      {ERR_INVALID_PARAMETER, "Invalid parameter passed to subroutine or function"},
      {ERR_INITIALIZE, "Unable to initialize A"},
      {ERR_LOAD_LIBRARY, "Unable to load library: A\nB"},
      {ERR_EXPORTED_SYMBOL, "Unable to find exported symbol A"},
      {ERR_CREATE_FILE, "Unable to create file: A\nB"},
      {ERR_FIND, "Unable to find 'A'."},
      {ERR_OPEN, "Unable to open 'A'.\nB"},
      {ERR_CLOSE, "Unable to close 'A'.\nB"},
      {ERR_DELETE, "Unable to delete 'A'.\nB"},
      {ERR_READ, "Unable to read 'A'.\nB"},
      {ERR_WRITE, "Unable to write 'A'.\nB"},
      {ERR_SEEK, "Unable to seek 'A'.\nB"},
      {ERR_OPEN_REGISTRY_KEY, "Unable to open registry key 'A'."},
      {ERR_READ_REGISTRY_KEY, "Unable to read registry key 'A'."},
      {ERR_WRITE_REGISTRY_KEY, "Unable to write registry key 'A'."},
      {ERR_FIND_SYMBOL, "Unable to find symbol 'A'."},
      {ERR_CREATE_OBJECT, "Unable to create object of class A"},
      {ERR_CREATE_THREAD, "Unable to create execution thread A"},
      {ERR_END_OF_FILE, "Unexpected end of file reading 'A'."},
  };
  for (const Row& row : texts) {
    const Exception error = Raised(row.code, "A", "B");
    EXPECT_EQ(error.GetErrCode(), row.code);
    EXPECT_EQ(error.GetDescription(), row.message);
  }
  EXPECT_EQ(Raised(ERR_UNKNOWN, 9).GetDescription(), "Unknown error (code number = 9)");
  EXPECT_EQ(Raised(ERR_PARSE, "a.xml", 3, "tag").GetDescription(),
            "Error parsing 'a.xml', line 3:\ntag");
  EXPECT_EQ(Raised(ERR_DAMAGED_FILE, "a.dat", 0x1234, 0xBEEF, 0xBEEE).GetDescription(),
            "File 'a.dat' cannot be read because the file is damaged near offset 0x00001234.  "
            "Computed CRC=0xbeef, File CRC=0xbeee\n");
  EXPECT_THAT(Raised(ERR_INTERNAL).GetDescription().String(),
              StartsWith("Internal Error.  An internal inconsistency has been detected.\n"));
  EXPECT_THAT(Raised(ERR_POLYGON_CLIPPING).GetDescription().String(),
              StartsWith("Internal Error in General Polygon Clipping library.\n"));
}

TEST(ThrowErrorImpl, SaysWhereItHappened) {
  const Exception error = Raised(ERR_OUT_OF_MEMORY);
  EXPECT_EQ(error.GetModule(), "Velum");
  EXPECT_EQ(error.GetSrcFile(), "Some.cpp");
  EXPECT_EQ(error.GetSrcLine(), 12);
}

TEST(ThrowErrorImpl, TakesTheFormatOfACustomMessageFirst) {
  EXPECT_EQ(Raised(ERR_CUSTOM, "row %d of %s", 5, "file").GetDescription(), "row 5 of file");
  EXPECT_EQ(Raised(ERR_CUSTOM, "x").GetErrCode(), 0);
  EXPECT_EQ(Raised(ERR_FIND, std::string(9000, 'x').c_str()).GetDescription(), "")
      << "a message too long to be formatted";
}

TEST(ThrowErrorImpl, ACodeThatIsNoneBecomesAnInternalError) {
  for (const int code :
       {26, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    const Exception error = Raised(code, "A", "B");
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    EXPECT_EQ(error.GetModule(), "Velum");
    EXPECT_EQ(error.GetSrcFile(), "Error");
    EXPECT_NE(error.GetSrcLine(), 12);
    EXPECT_EQ(error.GetDescription(), Raised(ERR_INTERNAL).GetDescription());
  }
}

void ThrowThroughList(int code, ...) {
  va_list arguments;
  va_start(arguments, code);
  ThrowVelumErrorVA("Maps", "Map.cpp", 5, code, arguments);
}

TEST(ThrowVelumError, RaisesForAModuleOfTheCallers) {
  try {
    ThrowVelumError("Maps", "Map.cpp", 3, ERR_CREATE_OBJECT, "Contour");
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetModule(), "Maps");
    EXPECT_EQ(error.GetSrcLine(), 3);
    EXPECT_EQ(error.GetDescription(), "Unable to create object of class Contour");
  }
  try {
    ThrowThroughList(ERR_CUSTOM, "%s!", "stop");
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetSrcFile(), "Map.cpp");
    EXPECT_EQ(error.GetDescription(), "stop!");
  }
}

TEST(Exception, KeepsTheThreadThatMadeIt) {
  const Exception here("M", "F", 1, 0, "text");
  Exception assigned = here;
  unsigned long there = 0;
  std::thread([&] {
    const Exception error("M", "F", 1, 0, "text");
    there = error.GetThreadId();
    const Exception copy(here);
    EXPECT_EQ(copy.GetThreadId(), here.GetThreadId());
    assigned = error;
  }).join();
  EXPECT_NE(there, here.GetThreadId());
  EXPECT_EQ(assigned.GetThreadId(), there);
}

TEST(UserAbortException, IsCaughtAsAnExceptionWithoutACode) {
  try {
    throw UserAbortException("M", "F", 7);
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), 0);
    EXPECT_EQ(error.GetSrcLine(), 7);
    EXPECT_EQ(error.GetDescription(), "User canceled the operation");
  }
}

TEST(Exception, IsNoStandardException) {
  static_assert(!std::is_base_of_v<std::exception, Exception>);
  static_assert(!std::is_polymorphic_v<Exception>);
  static_assert(std::is_copy_assignable_v<UserAbortException>);
}

TEST(FormatSystemErrorMsg, GivesTheSystemsText) {
  EXPECT_EQ(FormatSystemErrorMsg(ENOENT), "No such file or directory");
  EXPECT_EQ(FormatSystemErrorMsg(80), FormatSystemErrorMsg(EEXIST));
  EXPECT_EQ(FormatSystemErrorMsg(99999), "error 99999");
  EXPECT_EQ(FormatSystemErrorMsg(0x80004005UL), "error -2147467259");
  errno = EACCES;
  EXPECT_EQ(FormatSystemErrorMsg(), "Permission denied");
  EXPECT_EQ(errno, EACCES);
}

// What an application writes to take part.
class Fault : public IError {
 public:
  int ErrCode() const override { return ERR_FIND; }
  GString Description() const override { return "gone"; }
};

class Pages : public IHelp {
 public:
  void ShowHelp(GString topic) override { shown = topic; }
  GString shown;
};

TEST(Interfaces, AreImplementedByApplications) {
  const Fault fault;
  const IError& error = fault;
  EXPECT_EQ(error.Description() + std::to_string(error.ErrCode()), "gone9");
  Pages pages;
  static_cast<IHelp&>(pages).ShowHelp("gridding");
  EXPECT_EQ(pages.shown, "gridding");
}

}  // namespace
}  // namespace vlm
