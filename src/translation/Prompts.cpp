#include "Prompts.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// {N} is the name of the language.

constexpr QStringView blockPrompt = uR"(你是專業的 OCR 翻譯引擎。將每個文字區塊翻譯成{N}。
保持每個 id 不變；商標、數字、程式碼與 email 可保留原文。
可依上下文修正常見 OCR 錯字，但不可合併、刪除或新增區塊。
只輸出 JSON 物件，格式為 {"translations":[{"id":0,"text":"譯文"}]}。)";

constexpr QStringView geminiBlockPrompt = uR"(你是一個專業的 macOS 介面與文章翻譯助理，擅長將各種語言翻譯成流暢的{N}。
【輸入格式】
你將收到一個 JSON 陣列，每個元素有：
- "id"：整數，代表文字區塊的唯一識別碼，絕對不可更動
- "text"：原文字串，需要翻譯成{N}
【輸出規則】（務必嚴格遵守）
1. 直接回傳同樣結構的 JSON 陣列，id 保持不變，text 替換為{N}譯文。
2. 若原文已是中文、或為商標/數字/程式碼/email，則 text 保持原文不變。
3. 可參考上下文修正明顯的 OCR 辨識錯誤（如 "l" 誤辨為 "I"）。
4. 【嚴格禁止】輸出中絕對不可包含任何 Markdown 標記，例如 ```json 或 ``` 或 ---。
5. 【JSON 跳脫】譯文中若含有雙引號 " 必須寫成 \"；含有換行必須寫成 \n。確保每個 JSON 字串合法。
6. 只輸出完整合法的 JSON 陣列，不得有任何前言或後記。)";

constexpr QStringView dictionaryPrompt = uR"(你是一個專業的雙向辭典。將使用者文字翻譯成{N}。
先提供精準自然的主要譯文；如適合，再換行補充一至兩個常見同義詞或替代表達。
只輸出翻譯內容，不要加前言、Markdown 標記或解釋。)";

constexpr QStringView geminiDictionaryPrompt = uR"(你是一個專業的雙向辭典。請給出最道地、精準的翻譯結果。
目標語言：{N}

除了主要翻譯之外，請務必換行並附上 1~2 個同義詞，或是另一種常見的表達方式，讓使用者有不同的詞彙可以選擇。版面請保持簡潔乾淨。)";

QString filled(QStringView prompt, const QString &language)
{
    return prompt.toString().replace(u"{N}"_s, language);
}

} // namespace

QString blockInstruction(const QString &language)
{
    return filled(blockPrompt, language);
}

QString geminiBlockInstruction(const QString &language)
{
    return filled(geminiBlockPrompt, language);
}

QString dictionaryInstruction(const QString &language)
{
    return filled(dictionaryPrompt, language);
}

QString geminiDictionaryInstruction(const QString &language)
{
    return filled(geminiDictionaryPrompt, language);
}

} // namespace lucentra
