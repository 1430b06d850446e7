#include "resources/strings_ja.h"

namespace cvlog::resources {

// Mnemonics follow the caption in parentheses, before an ellipsis, and keep the English letter.
// The blanks in 109 and 110 start both key hints at about the same place in the menu font.
// 515 and 516 stand between the names of a method and an object, which stay in their order.
constexpr StringList kJapaneseStrings{{
    // Columns
    {100, u"日時"},
    {101, u"経過時間"},
    {102, u"メソッド"},
    {103, u"エンティティの種類"},
    {104, u"オブジェクト"},
    {105, u"結果"},
    {106, u"メッセージ"},
    // Log popup menu
    {107, u"ログのポップアップ"},
    {108, u"エラーを表示(&E)"},
    {109, u"折りたたむ(&L)                   ( テンキー - )"},
    {110, u"展開する(&X)                     ( テンキー + )"},
    {111, u"レコードを削除(&D)"},
    {112, u"ログをクリア(&A)"},
    {113, u"レコードをコピー(&C)"},
    {114, u"レポート(&R)..."},
    {115, u"履歴(&I)"},
    {116, u"列(&U)"},
    {117, u"<列>"},
    {118, u"ドッキング(&K)"},
    {119, u"非表示(&H)"},
    // History popup menu
    {120, u"履歴のポップアップ"},
    {121, u"エラーを表示(&E)"},
    {122, u"履歴レコードを削除(&D)"},
    {123, u"ログの履歴をクリア(&L)"},
    {124, u"履歴レコードをコピー(&C)"},
    {125, u"レポート(&R)..."},
    // Alert window
    {126, u"OK"},
    {127, u"Dock 関数ではなく Log ActiveX の新しい Parent プロパティをご使用ください。"},
    // Cancel dialog
    {128, u"展開しています..."},
    {129, u"      キャンセル"},
    // Log window
    {130, u"ポップアップ"},
    {131, u"履歴(&H)"},
    // Columns of the log control
    {132, u"日時"},
    {133, u"経過時間"},
    {134, u"メソッド"},
    {135, u"エンティティの種類"},
    {136, u"オブジェクト"},
    {137, u"結果"},
    {138, u"メッセージ"},
    // Log popup menu of the log control
    {139, u"ログのポップアップ"},
    {140, u"エラーを表示(&E)"},
    {141, u"折りたたむ(&L)                   ( テンキー - )"},
    {142, u"展開する(&X)                     ( テンキー + )"},
    {143, u"レコードを削除(&D)"},
    {144, u"ログをクリア(&A)"},
    {145, u"レコードをコピー(&C)"},
    {146, u"レポート(&R)..."},
    {147, u"履歴(&I)"},
    {148, u"列(&U)"},
    {149, u"<列>"},
    {150, u"ドッキング(&K)"},
    {151, u"非表示(&H)"},
    // History window
    {152, u"アクティビティ ログの履歴"},
    // History window captions
    {500, u"アクティビティ ログの履歴 - レコードを削除しています..."},
    {501, u"アクティビティ ログの履歴"},
    // Outcomes
    {502, u"タスク キューはキャンセルされました"},
    {503, u"メソッドはユーザーによってキャンセルされました"},
    {504, u"メソッドはタイムアウトのためキャンセルされました"},
    {505, u"メソッドは失敗しました"},
    {506, u"メソッドは正常に適用されました"},
    {507, u"メソッドは実行されましたが、警告があります"},
    {508, u"メソッドは実行されましたが、エラーがあります"},
    {509, u"メソッドは予期しないリターン コードで終了しました (RC = %1)"},
    // Question at the end of a series
    {510, u"詳細については、アクティビティ ログを参照してください。"},
    {511, u"今すぐログを表示しますか?"},
    // Rows and captions
    {512, u"... 一部のレコードは表示されていません ..."},
    {513, u"アクティビティ ログ"},
    {514, u"現在のセッション"},
    // Joiners of a record's text
    {515, u" を適用 "},
    {516, u" を次に適用: "},
}};

static_assert(isComplete(kJapaneseStrings));
static_assert(copiesAgree(kJapaneseStrings));

} // namespace cvlog::resources
