#include "resources/strings_en.h"

namespace cvlog::resources {

// The blanks in 109 and 110 start both key hints at about the same place in the menu font;
// those in 129 leave room for the picture on the button.
constexpr StringList kEnglishStrings{{
    // Columns
    {100, u"Date"},
    {101, u"Elapsed"},
    {102, u"Method"},
    {103, u"Entity Type"},
    {104, u"Object"},
    {105, u"Result"},
    {106, u"Message"},
    // Log popup menu
    {107, u"PopUpLog"},
    {108, u"Show &Errors"},
    {109, u"Co&llapse                   ( Grey - )"},
    {110, u"E&xpand                    ( Grey +)"},
    {111, u"&Delete Records"},
    {112, u"Cle&ar Log"},
    {113, u"&Copy Records"},
    {114, u"&Report..."},
    {115, u"H&istory"},
    {116, u"Col&umns"},
    {117, u"<column>"},
    {118, u"Doc&ked"},
    {119, u"&Hide"},
    // History popup menu
    {120, u"PopUpHistory"},
    {121, u"Show &Errors"},
    {122, u"&Delete History Records"},
    {123, u"C&lear Log History"},
    {124, u"&Copy History Records"},
    {125, u"&Report..."},
    // Alert window
    {126, u"OK"},
    {127, u"Do not use the old Dock function! Use the new Parent property of the Log ActiveX"},
    // Cancel dialog
    {128, u"Expanding ..."},
    {129, u"      Cancel"},
    // Log window
    {130, u"PopUp"},
    {131, u"&History"},
    // Columns of the log control
    {132, u"Date"},
    {133, u"Elapsed"},
    {134, u"Method"},
    {135, u"Entity Type"},
    {136, u"Object"},
    {137, u"Result"},
    {138, u"Message"},
    // Log popup menu of the log control
    {139, u"PopUpLog"},
    {140, u"Show &Errors"},
    {141, u"Co&llapse                   ( Grey - )"},
    {142, u"E&xpand                    ( Grey +)"},
    {143, u"&Delete Records"},
    {144, u"Cle&ar Log"},
    {145, u"&Copy Records"},
    {146, u"&Report..."},
    {147, u"H&istory"},
    {148, u"Col&umns"},
    {149, u"<column>"},
    {150, u"Doc&ked"},
    {151, u"&Hide"},
    // History window
    {152, u"Activity Log History"},
    // History window captions
    {500, u"Activity Log History - Deleting records..."},
    {501, u"Activity Log History"},
    // Outcomes
    {502, u"Task queue was canceled"},
    {503, u"Method was canceled by the user"},
    {504, u"Method was canceled due to timeout"},
    {505, u"Method failed"},
    {506, u"Method was applied successfully"},
    {507, u"Method was executed with warnings"},
    {508, u"Method was executed with errors"},
    {509, u"Method was finished with an unexpected return code (RC = %1)"},
    // Question at the end of a series
    {510, u"See Activity Log for details."},
    {511, u"Do you wish to see the log now?"},
    // Rows and captions
    {512, u"... Some records are hidden ..."},
    {513, u"Activity Log"},
    {514, u"Current session"},
    // Joiners of a record's text
    {515, u" applied "},
    {516, u" applied to "},
}};

static_assert(isComplete(kEnglishStrings));
static_assert(copiesAgree(kEnglishStrings));

} // namespace cvlog::resources
