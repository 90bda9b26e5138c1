#include "platform/sim/system_texts.h"

namespace zk::sim {

std::map<std::uint32_t, Text> EnglishSystemTexts() {
    return {
        {0, u"The operation completed successfully.\r\n"},
        {1, u"Incorrect function.\r\n"},
        {2, u"The system cannot find the file specified.\r\n"},
        {3, u"The system cannot find the path specified.\r\n"},
        {5, u"Access is denied.\r\n"},
        {6, u"The handle is invalid.\r\n"},
        {8, u"Not enough memory resources are available to process this command.\r\n"},
        {87, u"The parameter is incorrect.\r\n"},
        {122, u"The data area passed to a system call is too small.\r\n"},
        {161, u"The specified path is invalid.\r\n"},
        {170, u"The requested resource is in use.\r\n"},
        {183, u"Cannot create a file when that file already exists.\r\n"},
        {234, u"More data is available.\r\n"},
        {1400, u"Invalid window handle.\r\n"},
        {1407, u"Cannot find window class.\r\n"},
        {1409, u"Hot key is already registered.\r\n"},
        {1419, u"Hot key is not registered.\r\n"},
        {1813, u"The specified resource type cannot be found in the image file.\r\n"},
        {1814, u"The specified resource name cannot be found in the image file.\r\n"},
    };
}

}  // namespace zk::sim
