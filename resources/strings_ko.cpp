#include "resources/strings_ko.h"

namespace cvlog::resources {

// Mnemonics follow the caption in parentheses, before an ellipsis, and keep the English letter.
// The blanks in 109 and 110 start both key hints at about the same place in the menu font.
// 515 and 516 avoid particles, whose form would depend on the name before them.
constexpr StringList kKoreanStrings{{
    // Columns
    {100, u"날짜"},
    {101, u"경과 시간"},
    {102, u"메서드"},
    {103, u"엔터티 유형"},
    {104, u"개체"},
    {105, u"결과"},
    {106, u"메시지"},
    // Log popup menu
    {107, u"로그 팝업"},
    {108, u"오류 표시(&E)"},
    {109, u"축소(&L)                    ( 숫자 키패드 - )"},
    {110, u"확장(&X)                    ( 숫자 키패드 + )"},
    {111, u"레코드 삭제(&D)"},
    {112, u"로그 지우기(&A)"},
    {113, u"레코드 복사(&C)"},
    {114, u"보고서(&R)..."},
    {115, u"이력(&I)"},
    {116, u"열(&U)"},
    {117, u"<열>"},
    {118, u"도킹(&K)"},
    {119, u"숨기기(&H)"},
    // History popup menu
    {120, u"이력 팝업"},
    {121, u"오류 표시(&E)"},
    {122, u"이력 레코드 삭제(&D)"},
    {123, u"로그 이력 지우기(&L)"},
    {124, u"이력 레코드 복사(&C)"},
    {125, u"보고서(&R)..."},
    // Alert window
    {126, u"확인"},
    {127, u"이전 Dock 함수 대신 Log ActiveX의 새 Parent 속성을 사용하십시오."},
    // Cancel dialog
    {128, u"확장하는 중..."},
    {129, u"      취소"},
    // Log window
    {130, u"팝업"},
    {131, u"이력(&H)"},
    // Columns of the log control
    {132, u"날짜"},
    {133, u"경과 시간"},
    {134, u"메서드"},
    {135, u"엔터티 유형"},
    {136, u"개체"},
    {137, u"결과"},
    {138, u"메시지"},
    // Log popup menu of the log control
    {139, u"로그 팝업"},
    {140, u"오류 표시(&E)"},
    {141, u"축소(&L)                    ( 숫자 키패드 - )"},
    {142, u"확장(&X)                    ( 숫자 키패드 + )"},
    {143, u"레코드 삭제(&D)"},
    {144, u"로그 지우기(&A)"},
    {145, u"레코드 복사(&C)"},
    {146, u"보고서(&R)..."},
    {147, u"이력(&I)"},
    {148, u"열(&U)"},
    {149, u"<열>"},
    {150, u"도킹(&K)"},
    {151, u"숨기기(&H)"},
    // History window
    {152, u"활동 로그 이력"},
    // History window captions
    {500, u"활동 로그 이력 - 레코드를 삭제하는 중..."},
    {501, u"활동 로그 이력"},
    // Outcomes
    {502, u"작업 큐가 취소되었습니다"},
    {503, u"사용자가 메서드를 취소했습니다"},
    {504, u"시간 초과로 인해 메서드가 취소되었습니다"},
    {505, u"메서드가 실패했습니다"},
    {506, u"메서드가 정상적으로 적용되었습니다"},
    {507, u"메서드가 실행되었지만 경고가 있습니다"},
    {508, u"메서드가 실행되었지만 오류가 있습니다"},
    {509, u"메서드가 예기치 않은 반환 코드로 종료되었습니다(RC = %1)"},
    // Question at the end of a series
    {510, u"자세한 내용은 활동 로그를 참조하십시오."},
    {511, u"지금 로그를 보시겠습니까?"},
    // Rows and captions
    {512, u"... 일부 레코드가 숨겨져 있습니다 ..."},
    {513, u"활동 로그"},
    {514, u"현재 세션"},
    // Joiners of a record's text
    {515, u" 적용됨 "},
    {516, u" 적용 대상: "},
}};

static_assert(isComplete(kKoreanStrings));
static_assert(copiesAgree(kKoreanStrings));

} // namespace cvlog::resources
