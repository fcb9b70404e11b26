<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>%@ API URL 無效</source>
        <translation>%@ API の URL が無効です</translation>
    </message>
    <message>
        <source>%@ API 錯誤 %d：%@</source>
        <translation>%@ API エラー %d：%@</translation>
    </message>
    <message>
        <source>%@ 回應格式無法解析</source>
        <translation>%@ の応答を解析できませんでした</translation>
    </message>
    <message>
        <source>%@・拖曳移動</source>
        <translation>%@・ドラッグで移動</translation>
    </message>
    <message>
        <source>%@：%@，共 %@</source>
        <translation>%@：%@／%@</translation>
    </message>
    <message>
        <source>%d 個詞句</source>
        <translation>%d 件の語句</translation>
    </message>
    <message>
        <source>%d 個語言組合</source>
        <translation>%d 通りの言語の組</translation>
    </message>
    <message>
        <source>%d 分鐘前建立</source>
        <translation>%d 分前に作成</translation>
    </message>
    <message>
        <source>%d 天前建立</source>
        <translation>%d 日前に作成</translation>
    </message>
    <message>
        <source>%d 小時前建立</source>
        <translation>%d 時間前に作成</translation>
    </message>
    <message>
        <source>AI 翻譯</source>
        <translation>AI 翻訳</translation>
    </message>
    <message>
        <source>API Base URL</source>
        <translation>API ベース URL</translation>
    </message>
    <message>
        <source>API Key</source>
        <translation>API キー</translation>
    </message>
    <message>
        <source>API Key 或設定含有無法傳送的字元</source>
        <translation>API キーまたは設定に送信できない文字が含まれています</translation>
    </message>
    <message>
        <source>API Key 會安全存放於 macOS Keychain。</source>
        <translation>API キーはこのコンピューターのキーリングに安全に保存されます。</translation>
    </message>
    <message>
        <source>API Key 為選填，若留空則使用免費版（有流量與請求頻率限制）。</source>
        <translation>API キーは任意です。空欄の場合は無料版を使います（通信量と頻度に制限があります）。</translation>
    </message>
    <message>
        <source>Apple 內建翻譯</source>
        <translation>内蔵の翻訳</translation>
    </message>
    <message>
        <source>Apple 內建翻譯需升級至 macOS 15</source>
        <translation>Apple の内蔵翻訳には macOS 15 へのアップグレードが必要です</translation>
    </message>
    <message>
        <source>Apple 翻譯</source>
        <translation>このコンピューターで翻訳</translation>
    </message>
    <message>
        <source>Apple 翻譯失敗</source>
        <translation>Apple 翻訳に失敗しました</translation>
    </message>
    <message>
        <source>Azure 翻譯必須填寫 API Key 與對應的地區。</source>
        <translation>Azure 翻訳には API キーと対応するリージョンが必要です。</translation>
    </message>
    <message>
        <source>Claude 設定</source>
        <translation>Claude の設定</translation>
    </message>
    <message>
        <source>DeepL Free 與 Pro 金鑰皆可使用，App 會自動選擇對應端點。</source>
        <translation>DeepL Free と Pro のどちらのキーも使えます。対応するエンドポイントは自動で選ばれます。</translation>
    </message>
    <message>
        <source>DeepL 設定</source>
        <translation>DeepL の設定</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Gemini AI 設定</source>
        <translation>Gemini AI の設定</translation>
    </message>
    <message>
        <source>Gemini 翻譯必須填寫 API Key。</source>
        <translation>Gemini の翻訳には API キーが必要です。</translation>
    </message>
    <message>
        <source>Google 免費翻譯</source>
        <translation>Google 無料翻訳</translation>
    </message>
    <message>
        <source>Google 翻譯</source>
        <translation>Google 翻訳</translation>
    </message>
    <message>
        <source>Google 翻譯設定</source>
        <translation>Google 翻訳の設定</translation>
    </message>
    <message>
        <source>JSON Array parse error</source>
        <translation>Gemini の訳文が有効な JSON ではありません</translation>
    </message>
    <message>
        <source>JSON encode error</source>
        <translation>テキストを JSON に変換できませんでした</translation>
    </message>
    <message>
        <source>Lucentra 在 Wayland 工作階段中需要 XWayland，但找不到它（沒有設定 DISPLAY）。</source>
        <translation>Wayland セッションでは Lucentra に XWayland が必要ですが、見つかりません（DISPLAY が設定されていません）。</translation>
    </message>
    <message>
        <source>Lucentra 沒有在執行。</source>
        <translation>Lucentra は実行されていません。</translation>
    </message>
    <message>
        <source>Lucentra 沒有執行這個指令。</source>
        <translation>Lucentra はこのコマンドを実行しませんでした。</translation>
    </message>
    <message>
        <source>Lucentra 無法啟動。</source>
        <translation>Lucentra を起動できませんでした。</translation>
    </message>
    <message>
        <source>Lucentra 的一部分無法載入，請重新安裝 Lucentra。（%@）</source>
        <translation>Lucentra の一部を読み込めません。Lucentra を再インストールしてください。（%@）</translation>
    </message>
    <message>
        <source>Lucentra 需要圖形桌面（沒有設定 DISPLAY）。</source>
        <translation>Lucentra にはグラフィカルなデスクトップが必要です（DISPLAY が設定されていません）。</translation>
    </message>
    <message>
        <source>Lucentra：翻譯螢幕上的文字</source>
        <translation>Lucentra：画面上のテキストを翻訳</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通</source>
        <translation>Lucentra｜澄鏡通</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通 設定</source>
        <translation>Lucentra 設定</translation>
    </message>
    <message>
        <source>Microsoft Azure 翻譯</source>
        <translation>Microsoft Azure 翻訳</translation>
    </message>
    <message>
        <source>Microsoft Azure 設定</source>
        <translation>Microsoft Azure の設定</translation>
    </message>
    <message>
        <source>OpenAI 相容 API</source>
        <translation>OpenAI 互換 API</translation>
    </message>
    <message>
        <source>OpenAI 相容 API 設定</source>
        <translation>OpenAI 互換 API の設定</translation>
    </message>
    <message>
        <source>OpenAI 設定</source>
        <translation>OpenAI の設定</translation>
    </message>
    <message>
        <source>Request prepare error</source>
        <translation>ネットワーク要求を準備できませんでした</translation>
    </message>
    <message>
        <source>Response parse error</source>
        <translation>Gemini の応答を解析できませんでした</translation>
    </message>
    <message>
        <source>Wayland 的圖層；合成器支援</source>
        <translation>Wayland のレイヤーサーフェス（コンポジターが対応）</translation>
    </message>
    <message>
        <source>X11 視窗</source>
        <translation>X11 のウィンドウ</translation>
    </message>
    <message>
        <source>X11 視窗（XWayland）；合成器不支援圖層</source>
        <translation>X11 のウィンドウ（XWayland）。コンポジターはレイヤーサーフェスに未対応</translation>
    </message>
    <message>
        <source>lucentra --help 列出所有指令</source>
        <translation>lucentra --help ですべてのコマンドを表示します</translation>
    </message>
    <message>
        <source>⚠️ API Key 為空，將無法進行翻譯！</source>
        <translation>⚠️ API キーが空なので翻訳できません！</translation>
    </message>
    <message>
        <source>⚠️ 請先在翻譯設定中允許將文字傳送至 %@。</source>
        <translation>⚠️ 先に翻訳の設定で %@ へのテキストの送信を許可してください。</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入相容 API Key</source>
        <translation>⚠️ 設定で互換 API のキーを入力してください</translation>
    </message>
    <message>
        <source>✓ 將使用 Google 免費版（有流量與請求頻率限制）</source>
        <translation>✓ Google の無料版を使います（通信量と頻度に制限があります）</translation>
    </message>
    <message>
        <source>❌ API 回應格式錯誤或金鑰無效</source>
        <translation>❌ API の応答形式が正しくないか、キーが無効です</translation>
    </message>
    <message>
        <source>❌ Gemini API 錯誤 %d：%@</source>
        <translation>❌ Gemini API エラー %d：%@</translation>
    </message>
    <message>
        <source>❌ 網路請求準備失敗</source>
        <translation>❌ ネットワーク要求を準備できませんでした</translation>
    </message>
    <message>
        <source>❌ 網路錯誤：%@</source>
        <translation>❌ ネットワークエラー：%@</translation>
    </message>
    <message>
        <source>❌ 翻譯失敗：%@</source>
        <translation>❌ 翻訳に失敗しました：%@</translation>
    </message>
    <message>
        <source>「!」標出 %d 個可以改善之處。</source>
        <translation>「!」は改善できる点です：%d 件。</translation>
    </message>
    <message>
        <source>一般</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>下載 %@</source>
        <translation>%@ をダウンロード</translation>
    </message>
    <message>
        <source>下載中斷。已下載的部分會保留，可以稍後繼續。</source>
        <translation>ダウンロードが中断されました。受信済みの部分は保存され、後で続きから再開できます。</translation>
    </message>
    <message>
        <source>下載的檔案內容不符，已捨棄。</source>
        <translation>ダウンロードしたファイルの内容が一致しないため、破棄しました。</translation>
    </message>
    <message>
        <source>下載的檔案大小不符，已捨棄。</source>
        <translation>ダウンロードしたファイルのサイズが一致しないため、破棄しました。</translation>
    </message>
    <message>
        <source>下載翻譯 PAIR（例如 en-ja）所需的模型；必要時經由英文</source>
        <translation>PAIR（例：en-ja）の翻訳に必要なモデルをダウンロードする。必要なら英語を経由する</translation>
    </message>
    <message>
        <source>不支援的圖片格式</source>
        <translation>対応していない画像形式です</translation>
    </message>
    <message>
        <source>不支援這種模型：%@</source>
        <translation>この種類のモデルには対応していません：%@</translation>
    </message>
    <message>
        <source>不是可辨識的圖片格式：%@</source>
        <translation>対応していない画像形式です：%@</translation>
    </message>
    <message>
        <source>不是語言組合：%@</source>
        <translation>言語の組み合わせではありません：%@</translation>
    </message>
    <message>
        <source>介面語言</source>
        <translation>表示言語</translation>
    </message>
    <message>
        <source>伺服器沒有這個語言的翻譯模型。</source>
        <translation>この言語の翻訳モデルはサーバーにありません。</translation>
    </message>
    <message>
        <source>伺服器的回應不是有效的 HTTP 回應</source>
        <translation>サーバーの応答が有効な HTTP ではありません</translation>
    </message>
    <message>
        <source>伺服器的回應過大</source>
        <translation>サーバーの応答が大きすぎます</translation>
    </message>
    <message>
        <source>伺服器的安全憑證無效</source>
        <translation>サーバーのセキュリティ証明書が無効です</translation>
    </message>
    <message>
        <source>伺服器的模型清單無法使用。</source>
        <translation>サーバーのモデル一覧を利用できません。</translation>
    </message>
    <message>
        <source>使用第 N 個翻譯引擎（0 至 7），不改變設定</source>
        <translation>今回だけ翻訳エンジン N（0～7）を使う</translation>
    </message>
    <message>
        <source>來源語言</source>
        <translation>原文の言語</translation>
    </message>
    <message>
        <source>停止即時翻譯</source>
        <translation>リアルタイム翻訳を停止する</translation>
    </message>
    <message>
        <source>停止輸入後自動翻譯</source>
        <translation>入力が止まると自動で翻訳します</translation>
    </message>
    <message>
        <source>允許將文字傳送至 %@</source>
        <translation>%@ へのテキストの送信を許可</translation>
    </message>
    <message>
        <source>全域快捷鍵</source>
        <translation>グローバルショートカット</translation>
    </message>
    <message>
        <source>全選</source>
        <translation>すべて選択</translation>
    </message>
    <message>
        <source>全部顯示</source>
        <translation>すべて表示</translation>
    </message>
    <message>
        <source>分享畫面…</source>
        <translation>画面を共有…</translation>
    </message>
    <message>
        <source>分享的不是翻譯板所在的螢幕。請再試一次，並選擇翻譯板所在的螢幕。</source>
        <translation>共有された画面に翻訳パネルがありません。もう一度試して、翻訳パネルのある画面を選んでください。</translation>
    </message>
    <message>
        <source>切換到手動輸入</source>
        <translation>手動入力に切り替え</translation>
    </message>
    <message>
        <source>切換回框選翻譯</source>
        <translation>範囲翻訳に戻る</translation>
    </message>
    <message>
        <source>切換為框選翻譯</source>
        <translation>範囲翻訳に切り替え</translation>
    </message>
    <message>
        <source>切換為框選翻譯 (當前:自動辨識)</source>
        <translation>範囲翻訳に切り替え（現在：自動認識）</translation>
    </message>
    <message>
        <source>切換為自動辨識</source>
        <translation>自動認識に切り替え</translation>
    </message>
    <message>
        <source>切換為自動辨識 (當前:框選翻譯)</source>
        <translation>自動認識に切り替え（現在：範囲翻訳）</translation>
    </message>
    <message>
        <source>切換目標語言</source>
        <translation>翻訳先の言語を変更</translation>
    </message>
    <message>
        <source>列出在這部電腦上翻譯的服務與語言</source>
        <translation>このコンピューターで翻訳するサービスと言語を一覧表示する</translation>
    </message>
    <message>
        <source>列出歷史紀錄</source>
        <translation>履歴を一覧表示する</translation>
    </message>
    <message>
        <source>列出這部電腦上的環境、有什麼不對、如何改善；不含密鑰與擷取的文字</source>
        <translation>このコンピューターの環境と、問題点およびその直し方を表示します。キーや読み取った文字は含みません</translation>
    </message>
    <message>
        <source>列出這部電腦上與伺服器提供的翻譯模型</source>
        <translation>このコンピューターとサーバーの翻訳モデルを一覧表示する</translation>
    </message>
    <message>
        <source>刪除</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>刪除此筆翻譯</source>
        <translation>この翻訳を削除</translation>
    </message>
    <message>
        <source>剪下</source>
        <translation>切り取り</translation>
    </message>
    <message>
        <source>加入桌面設定檔的一行：</source>
        <translation>デスクトップの設定に追加する行：</translation>
    </message>
    <message>
        <source>匯出的格式；未指定時依 FILE 的副檔名，否則為 csv</source>
        <translation>エクスポートの形式。省略時は FILE の拡張子に従い、なければ csv</translation>
    </message>
    <message>
        <source>匯出顯示的紀錄</source>
        <translation>表示中の履歴をエクスポート</translation>
    </message>
    <message>
        <source>即時翻譯</source>
        <translation>リアルタイム翻訳</translation>
    </message>
    <message>
        <source>即時翻譯中</source>
        <translation>リアルタイム翻訳中</translation>
    </message>
    <message>
        <source>即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）</source>
        <translation>リアルタイム翻訳（このデスクトップでは翻訳パネルがちらつくため使用できません）</translation>
    </message>
    <message>
        <source>即時翻譯：開</source>
        <translation>リアルタイム翻訳：オン</translation>
    </message>
    <message>
        <source>即時翻譯：關</source>
        <translation>リアルタイム翻訳：オフ</translation>
    </message>
    <message>
        <source>原文</source>
        <translation>原文</translation>
    </message>
    <message>
        <source>取得翻譯模型…</source>
        <translation>翻訳モデルを入手…</translation>
    </message>
    <message>
        <source>取消下載</source>
        <translation>ダウンロードを中止</translation>
    </message>
    <message>
        <source>取消收藏</source>
        <translation>スターを外す</translation>
    </message>
    <message>
        <source>古典透白 (Classic White - 預設)</source>
        <translation>クラシックホワイト（デフォルト）</translation>
    </message>
    <message>
        <source>另一個下載正在進行。</source>
        <translation>別のダウンロードが進行中です。</translation>
    </message>
    <message>
        <source>只包含原文或譯文中有 TEXT 的紀錄</source>
        <translation>原文か訳文に TEXT を含む履歴だけにする</translation>
    </message>
    <message>
        <source>只用 FOLDER 中的模型逐句翻譯標準輸入，每行一句</source>
        <translation>FOLDER のモデルだけで標準入力を 1 行 1 文ずつ翻訳する</translation>
    </message>
    <message>
        <source>可以下載的翻譯模型：</source>
        <translation>ダウンロードできる翻訳モデル：</translation>
    </message>
    <message>
        <source>可以使用</source>
        <translation>使用できます</translation>
    </message>
    <message>
        <source>可用性檢查</source>
        <translation>動作確認</translation>
    </message>
    <message>
        <source>可連接 OpenRouter、Ollama 或其他支援 Chat Completions 的服務；非本機網址必須使用 HTTPS。</source>
        <translation>OpenRouter、Ollama など Chat Completions に対応したサービスに接続できます。このコンピューター以外のアドレスでは HTTPS が必要です。</translation>
    </message>
    <message>
        <source>合成器</source>
        <translation>コンポジター</translation>
    </message>
    <message>
        <source>合成器不允許擷取畫面。請安裝套件，而不是直接從原始碼執行。</source>
        <translation>コンポジターが画面の取得を許可していません。ソースから実行せず、パッケージをインストールしてください。</translation>
    </message>
    <message>
        <source>同時輸出各階段所需的毫秒數</source>
        <translation>各段階にかかったミリ秒も出力する</translation>
    </message>
    <message>
        <source>同時輸出每一行的譯文與位置</source>
        <translation>各行の訳文と位置も出力する</translation>
    </message>
    <message>
        <source>否</source>
        <translation>いいえ</translation>
    </message>
    <message>
        <source>單字卡（以定位字元分隔）…</source>
        <translation>単語カード（タブ区切り）…</translation>
    </message>
    <message>
        <source>單擊玻璃板即可翻譯</source>
        <translation>翻訳パネルをクリックすると翻訳します</translation>
    </message>
    <message>
        <source>單擊翻譯</source>
        <translation>クリックで翻訳</translation>
    </message>
    <message>
        <source>回應內容不是有效的 JSON</source>
        <translation>応答が有効な JSON ではありません</translation>
    </message>
    <message>
        <source>圖片已損壞或無法解碼：%@</source>
        <translation>画像が壊れているか、デコードできません：%@</translation>
    </message>
    <message>
        <source>圖片檔案是空的：%@</source>
        <translation>画像ファイルが空です：%@</translation>
    </message>
    <message>
        <source>圖片過大（%d × %d 像素）：%@</source>
        <translation>画像が大きすぎます（%d × %d ピクセル）：%@</translation>
    </message>
    <message>
        <source>在下方 Dock 欄顯示圖示</source>
        <translation>タスクバーに表示</translation>
    </message>
    <message>
        <source>在桌面的設定中變更…</source>
        <translation>デスクトップの設定で変更…</translation>
    </message>
    <message>
        <source>在歷史紀錄中開啟</source>
        <translation>履歴で開く</translation>
    </message>
    <message>
        <source>在這部電腦上翻譯</source>
        <translation>このコンピューターでの翻訳</translation>
    </message>
    <message>
        <source>地區</source>
        <translation>リージョン</translation>
    </message>
    <message>
        <source>執行中的 Lucentra</source>
        <translation>実行中の Lucentra</translation>
    </message>
    <message>
        <source>外觀</source>
        <translation>外観</translation>
    </message>
    <message>
        <source>多餘的參數：%@</source>
        <translation>余分な引数：%@</translation>
    </message>
    <message>
        <source>失去焦點時自動隱藏玻璃板</source>
        <translation>フォーカスを失ったら翻訳パネルを隠す</translation>
    </message>
    <message>
        <source>安裝這些套件也有幫助：%@</source>
        <translation>次のパッケージのインストールも役立ちます：%@</translation>
    </message>
    <message>
        <source>將圖片寫入 OUT.png</source>
        <translation>画像を OUT.png に書き込む</translation>
    </message>
    <message>
        <source>將屬於同一段落的各行合併</source>
        <translation>同じ段落の行をつなげる</translation>
    </message>
    <message>
        <source>將歷史紀錄匯出到 FILE；只讀取，不改變紀錄</source>
        <translation>履歴を FILE にエクスポートする（読み取りのみ）</translation>
    </message>
    <message>
        <source>尚未下載完成</source>
        <translation>ダウンロード未完了</translation>
    </message>
    <message>
        <source>尚未建立</source>
        <translation>まだありません</translation>
    </message>
    <message>
        <source>尚未有任何翻譯紀錄</source>
        <translation>翻訳履歴はまだありません</translation>
    </message>
    <message>
        <source>工作階段</source>
        <translation>セッション</translation>
    </message>
    <message>
        <source>已刪除 %d 筆紀錄</source>
        <translation>%d 件の履歴を削除しました</translation>
    </message>
    <message>
        <source>已刪除 1 筆紀錄</source>
        <translation>1 件の履歴を削除しました</translation>
    </message>
    <message>
        <source>已取消下載。</source>
        <translation>ダウンロードを中止しました。</translation>
    </message>
    <message>
        <source>已同意</source>
        <translation>同意済み</translation>
    </message>
    <message>
        <source>已安裝此語言所需的翻譯模型。</source>
        <translation>この言語の翻訳モデルはインストール済みです。</translation>
    </message>
    <message>
        <source>已安裝的翻譯模型：%@</source>
        <translation>インストール済みの翻訳モデル：%@</translation>
    </message>
    <message>
        <source>已安裝：%@</source>
        <translation>インストールしました：%@</translation>
    </message>
    <message>
        <source>已收藏</source>
        <translation>スター付き</translation>
    </message>
    <message>
        <source>已清除未收藏的紀錄</source>
        <translation>スターなしの履歴を消去しました</translation>
    </message>
    <message>
        <source>已移除：%@</source>
        <translation>削除しました：%@</translation>
    </message>
    <message>
        <source>已經安裝最新的翻譯模型。</source>
        <translation>最新の翻訳モデルはインストール済みです。</translation>
    </message>
    <message>
        <source>已複製</source>
        <translation>コピーしました</translation>
    </message>
    <message>
        <source>已複製原文</source>
        <translation>原文をコピーしました</translation>
    </message>
    <message>
        <source>已複製翻譯</source>
        <translation>訳文をコピーしました</translation>
    </message>
    <message>
        <source>已選用</source>
        <translation>選択中</translation>
    </message>
    <message>
        <source>引擎與語系</source>
        <translation>エンジンと言語</translation>
    </message>
    <message>
        <source>復原</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>快捷鍵</source>
        <translation>ショートカット</translation>
    </message>
    <message>
        <source>快速鍵</source>
        <translation>ショートカット</translation>
    </message>
    <message>
        <source>您目前選用 Apple 內建引擎，支援無限量免費離線翻譯。</source>
        <translation>内蔵エンジンを使用中です。オフラインでも、無料で無制限に翻訳できます。</translation>
    </message>
    <message>
        <source>您設定的相容 API 端點</source>
        <translation>設定した互換 API のエンドポイント</translation>
    </message>
    <message>
        <source>所選服務</source>
        <translation>選択したサービス</translation>
    </message>
    <message>
        <source>所需的翻譯模型：%@</source>
        <translation>必要な翻訳モデル：%@</translation>
    </message>
    <message>
        <source>手動翻譯（點擊或快捷鍵）</source>
        <translation>手動（クリックまたはショートカット）</translation>
    </message>
    <message>
        <source>手動輸入</source>
        <translation>手動入力</translation>
    </message>
    <message>
        <source>找不到伺服器，請檢查網路連線與網址</source>
        <translation>サーバーが見つかりません。ネットワーク接続とアドレスを確認してください</translation>
    </message>
    <message>
        <source>找不到可擷取的翻譯視窗，請確認螢幕錄影權限</source>
        <translation>キャプチャできる翻訳パネルが見つかりません。画面収録の許可を確認してください</translation>
    </message>
    <message>
        <source>找不到工作階段匯流排（D-Bus），無法聯絡 Lucentra。</source>
        <translation>セッションバス（D-Bus）が見つからないため、Lucentra に接続できません。</translation>
    </message>
    <message>
        <source>找不到符合的紀錄</source>
        <translation>一致する履歴が見つかりません</translation>
    </message>
    <message>
        <source>找不到翻譯視窗所在的顯示器</source>
        <translation>翻訳パネルがあるディスプレイが見つかりません</translation>
    </message>
    <message>
        <source>把這塊翻譯板拖到您看不懂的文字上。</source>
        <translation>この翻訳パネルを、読めない文字の上にドラッグしてください。</translation>
    </message>
    <message>
        <source>按 %@ 可隨時顯示或隱藏翻譯板。</source>
        <translation>%@ を押すと、いつでもこのパネルを表示したり隠したりできます。</translation>
    </message>
    <message>
        <source>按住 Option，再按主鍵盤上的 Return（↩）鍵</source>
        <translation>Alt を押しながら、メインキーボードの Return（↩）を押します</translation>
    </message>
    <message>
        <source>授權：%@</source>
        <translation>ライセンス：%@</translation>
    </message>
    <message>
        <source>搜尋紀錄...</source>
        <translation>履歴を検索…</translation>
    </message>
    <message>
        <source>操作</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>操作模式</source>
        <translation>モード</translation>
    </message>
    <message>
        <source>擷取畫面</source>
        <translation>画面の取得</translation>
    </message>
    <message>
        <source>收合</source>
        <translation>折りたたむ</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>スターを付ける</translation>
    </message>
    <message>
        <source>文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。</source>
        <translation>テキストが多すぎて、一部の行は時間内に認識できませんでした。翻訳パネルを小さくして、もう一度お試しください。</translation>
    </message>
    <message>
        <source>文字已是目標語言。</source>
        <translation>テキストはすでに翻訳先の言語です。</translation>
    </message>
    <message>
        <source>文字辨識模型</source>
        <translation>文字認識のモデル</translation>
    </message>
    <message>
        <source>日</source>
        <translation>日</translation>
    </message>
    <message>
        <source>日文</source>
        <translation>日本語</translation>
    </message>
    <message>
        <source>是</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>暫停記錄</source>
        <translation>記録を一時停止</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>有 API Key</source>
        <translation>API キーあり</translation>
    </message>
    <message>
        <source>服務</source>
        <translation>サービス</translation>
    </message>
    <message>
        <source>服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定</source>
        <translation>サービスから有効な訳文が返されませんでした。キー、モデル、ネットワークの設定を確認してください</translation>
    </message>
    <message>
        <source>未知的指令：%@</source>
        <translation>不明なコマンド：%@</translation>
    </message>
    <message>
        <source>未知的選項：%@</source>
        <translation>不明なオプション：%@</translation>
    </message>
    <message>
        <source>未知錯誤</source>
        <translation>不明なエラー</translation>
    </message>
    <message>
        <source>未設定</source>
        <translation>未設定</translation>
    </message>
    <message>
        <source>柔和櫻粉 (Soft Pink)</source>
        <translation>ソフトピンク</translation>
    </message>
    <message>
        <source>框選翻譯</source>
        <translation>範囲翻訳</translation>
    </message>
    <message>
        <source>桌面</source>
        <translation>デスクトップ</translation>
    </message>
    <message>
        <source>桌面沒有回答分享畫面的請求。請再試一次；如果仍然沒有反應，請重新登入。</source>
        <translation>画面の共有の要求にデスクトップが応答しませんでした。もう一度お試しください。それでも応答がない場合は、ログインし直してください。</translation>
    </message>
    <message>
        <source>極簡無邊框 (No Border)</source>
        <translation>枠なし</translation>
    </message>
    <message>
        <source>標準輸入不是 UTF-8 文字</source>
        <translation>標準入力が UTF-8 のテキストではありません</translation>
    </message>
    <message>
        <source>標準輸入的文字過長</source>
        <translation>標準入力のテキストが長すぎます</translation>
    </message>
    <message>
        <source>模型伺服器回應錯誤：HTTP %d。</source>
        <translation>モデルサーバーがエラーを返しました：HTTP %d。</translation>
    </message>
    <message>
        <source>模型伺服器的網址必須使用 HTTPS。</source>
        <translation>モデルサーバーの URL は HTTPS でなければなりません。</translation>
    </message>
    <message>
        <source>模型名稱</source>
        <translation>モデル名</translation>
    </message>
    <message>
        <source>模型名稱可依你的 Anthropic 帳號權限調整。</source>
        <translation>モデル名は Anthropic アカウントの権限に合わせて変更できます。</translation>
    </message>
    <message>
        <source>模型名稱可依你的 OpenAI 帳號權限調整。</source>
        <translation>モデル名は OpenAI アカウントの権限に合わせて変更できます。</translation>
    </message>
    <message>
        <source>模型的檔案已損壞：%@</source>
        <translation>モデルのファイルが壊れています：%@</translation>
    </message>
    <message>
        <source>檔案</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>正在取得模型清單…</source>
        <translation>モデルの一覧を取得しています…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文…</source>
        <translation>このコンピューターの訳文を集めています…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文，請稍後再試。</source>
        <translation>このコンピューターにある訳文を集めています。少し待ってからもう一度お試しください。</translation>
    </message>
    <message>
        <source>正在測試連線…</source>
        <translation>接続をテストしています…</translation>
    </message>
    <message>
        <source>正在辨識與翻譯</source>
        <translation>認識と翻訳を実行中</translation>
    </message>
    <message>
        <source>歷史紀錄</source>
        <translation>履歴</translation>
    </message>
    <message>
        <source>段落</source>
        <translation>段落ごと</translation>
    </message>
    <message>
        <source>沒有</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>沒有偵測到文字</source>
        <translation>テキストが見つかりませんでした</translation>
    </message>
    <message>
        <source>沒有分享螢幕，Lucentra 就看不到翻譯板下方的文字。按「分享畫面…」後，桌面會再問一次。</source>
        <translation>画面が共有されていないため、翻訳パネルの下の文字が見えません。「画面を共有…」を押すと、デスクトップがもう一度確認します。</translation>
    </message>
    <message>
        <source>沒有可用的語言</source>
        <translation>利用できる言語がありません</translation>
    </message>
    <message>
        <source>沒有可翻譯的文字</source>
        <translation>翻訳するテキストがありません</translation>
    </message>
    <message>
        <source>沒有合成器，翻譯板無法透明。請啟動一個，例如 picom。</source>
        <translation>コンポジターがないため、翻訳パネルを透明にできません。picom などを起動してください。</translation>
    </message>
    <message>
        <source>沒有安裝這個翻譯模型。</source>
        <translation>この翻訳モデルはインストールされていません。</translation>
    </message>
    <message>
        <source>沒有工作階段匯流排：快速鍵指令、鑰匙圈與狀態圖示都無法使用。請從桌面的工作階段啟動。</source>
        <translation>セッションバスがありません。コマンド、キーリング、状態アイコンは使えません。デスクトップのセッションから起動してください。</translation>
    </message>
    <message>
        <source>沒有發現問題。</source>
        <translation>問題は見つかりませんでした。</translation>
    </message>
    <message>
        <source>沒有這些模型，就讀不到那些語言的文字。請安裝：%@</source>
        <translation>モデルがない言語の文字は読み取れません。インストールしてください：%@</translation>
    </message>
    <message>
        <source>淡雅水藍 (Subtle Blue)</source>
        <translation>淡いブルー</translation>
    </message>
    <message>
        <source>深色底、白字</source>
        <translation>暗い地に白い文字</translation>
    </message>
    <message>
        <source>淺色底、黑字</source>
        <translation>明るい地に黒い文字</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>清除搜尋</source>
        <translation>検索をクリア</translation>
    </message>
    <message>
        <source>清除未收藏</source>
        <translation>スターなしを消去</translation>
    </message>
    <message>
        <source>測試會送出一小段範例文字；雲端服務可能計入極少量 API 用量。</source>
        <translation>テストでは短い例文を送信します。クラウドサービスではごくわずかな API 使用量として数えられることがあります。</translation>
    </message>
    <message>
        <source>測試翻譯引擎的連線</source>
        <translation>翻訳エンジンの接続をテストする</translation>
    </message>
    <message>
        <source>測試連線</source>
        <translation>接続をテスト</translation>
    </message>
    <message>
        <source>為了讀取翻譯板下方的文字，桌面接下來會請您分享畫面；請選擇翻譯板所在的螢幕。</source>
        <translation>翻訳パネルの下の文字を読み取るため、次にデスクトップが画面の共有を求めます。翻訳パネルのある画面を選んでください。</translation>
    </message>
    <message>
        <source>無法使用</source>
        <translation>使用できません</translation>
    </message>
    <message>
        <source>無法判斷文字的語言。</source>
        <translation>テキストの言語を判別できませんでした。</translation>
    </message>
    <message>
        <source>無法匯出：%@</source>
        <translation>エクスポートできませんでした：%@</translation>
    </message>
    <message>
        <source>無法寫入圖片 %@：%@</source>
        <translation>画像 %@ を書き込めませんでした：%@</translation>
    </message>
    <message>
        <source>無法寫入標準輸出</source>
        <translation>標準出力に書き込めませんでした</translation>
    </message>
    <message>
        <source>無法寫入模型資料夾：%@</source>
        <translation>モデルのフォルダーに書き込めません：%@</translation>
    </message>
    <message>
        <source>無法建立翻譯輸入</source>
        <translation>翻訳の入力を作成できませんでした</translation>
    </message>
    <message>
        <source>無法擷取畫面</source>
        <translation>画面をキャプチャできませんでした</translation>
    </message>
    <message>
        <source>無法與伺服器建立安全連線</source>
        <translation>サーバーと安全な接続を確立できませんでした</translation>
    </message>
    <message>
        <source>無法讀取先前的翻譯紀錄，原檔案會保留在同一個資料夾中。</source>
        <translation>以前の翻訳履歴を読み込めませんでした。元のファイルは同じフォルダーに残ります。</translation>
    </message>
    <message>
        <source>無法讀取圖片 %@：%@</source>
        <translation>画像 %@ を読み込めませんでした：%@</translation>
    </message>
    <message>
        <source>無法讀取或寫入這個檔案。請檢查它的擁有者與權限。</source>
        <translation>このファイルを読み書きできません。所有者と権限を確認してください。</translation>
    </message>
    <message>
        <source>無法讀取標準輸入</source>
        <translation>標準入力を読み込めませんでした</translation>
    </message>
    <message>
        <source>無法讀取翻譯紀錄：%@</source>
        <translation>翻訳履歴を読み込めませんでした：%@</translation>
    </message>
    <message>
        <source>無法透過代理伺服器連線</source>
        <translation>プロキシサーバー経由で接続できませんでした</translation>
    </message>
    <message>
        <source>無法連線到 X 伺服器（DISPLAY）。</source>
        <translation>X サーバー（DISPLAY）に接続できません。</translation>
    </message>
    <message>
        <source>無法連線到伺服器</source>
        <translation>サーバーに接続できませんでした</translation>
    </message>
    <message>
        <source>版本</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>狀態圖示</source>
        <translation>状態アイコン</translation>
    </message>
    <message>
        <source>玻璃板樣式</source>
        <translation>翻訳パネルのスタイル</translation>
    </message>
    <message>
        <source>玻璃色調</source>
        <translation>ガラスの色調</translation>
    </message>
    <message>
        <source>玻璃透明度：%d%%</source>
        <translation>ガラスの不透明度：%d%%</translation>
    </message>
    <message>
        <source>由桌面的快捷鍵呼叫 Lucentra</source>
        <translation>デスクトップのショートカットで Lucentra を呼び出す</translation>
    </message>
    <message>
        <source>由系統安裝</source>
        <translation>システムのモデル</translation>
    </message>
    <message>
        <source>畫面分享中斷了。請再試一次。</source>
        <translation>画面の共有が中断されました。もう一度お試しください。</translation>
    </message>
    <message>
        <source>目標語言</source>
        <translation>翻訳先の言語</translation>
    </message>
    <message>
        <source>目標語言：%@</source>
        <translation>翻訳先の言語：%@</translation>
    </message>
    <message>
        <source>相容 API</source>
        <translation>互換 API</translation>
    </message>
    <message>
        <source>相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP</source>
        <translation>互換 API の URL には HTTPS が必要です（localhost では HTTP も使えます）</translation>
    </message>
    <message>
        <source>相容 API URL 無效</source>
        <translation>互換 API の URL が無効です</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>わかりました</translation>
    </message>
    <message>
        <source>磁碟空間不足：還需要 %@。</source>
        <translation>ディスクの空き容量が足りません：%@ 必要です。</translation>
    </message>
    <message>
        <source>移動或縮放後自動翻譯・%@</source>
        <translation>移動・サイズ変更後に自動翻訳・%@</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>移除 %@</source>
        <translation>%@ を削除</translation>
    </message>
    <message>
        <source>移除 PAIR 的模型</source>
        <translation>PAIR のモデルを削除する</translation>
    </message>
    <message>
        <source>稍後</source>
        <translation>あとで</translation>
    </message>
    <message>
        <source>简</source>
        <translation>简</translation>
    </message>
    <message>
        <source>簡體中文</source>
        <translation>簡体字中国語</translation>
    </message>
    <message>
        <source>系統</source>
        <translation>システム</translation>
    </message>
    <message>
        <source>系統不接受這個組合鍵，可能已有其他程式使用。請改用別的組合鍵。</source>
        <translation>このショートカットはシステムに拒否されました。ほかのプログラムが使っている可能性があります。別のショートカットをお選びください。</translation>
    </message>
    <message>
        <source>系統沒有回傳擷取畫面</source>
        <translation>システムから画面の画像が返されませんでした</translation>
    </message>
    <message>
        <source>系統行為</source>
        <translation>動作</translation>
    </message>
    <message>
        <source>約 %@</source>
        <translation>約 %@</translation>
    </message>
    <message>
        <source>結束 Lucentra｜澄鏡通</source>
        <translation>Lucentra を終了</translation>
    </message>
    <message>
        <source>結束執行中的 Lucentra</source>
        <translation>実行中の Lucentra を終了する</translation>
    </message>
    <message>
        <source>網路連線發生錯誤</source>
        <translation>ネットワーク接続でエラーが発生しました</translation>
    </message>
    <message>
        <source>編輯</source>
        <translation>編集</translation>
    </message>
    <message>
        <source>縮小</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>繁</source>
        <translation>繁</translation>
    </message>
    <message>
        <source>繁體中文</source>
        <translation>繁体字中国語</translation>
    </message>
    <message>
        <source>繁體中文由 %@ 與簡體中文互相轉換。</source>
        <translation>繁体字中国語は %@ で簡体字中国語と相互に変換します。</translation>
    </message>
    <message>
        <source>繼續下載 %@</source>
        <translation>%@ の続きをダウンロード</translation>
    </message>
    <message>
        <source>缺少參數：%@</source>
        <translation>引数がありません：%@</translation>
    </message>
    <message>
        <source>缺少指令</source>
        <translation>コマンドがありません</translation>
    </message>
    <message>
        <source>翻譯</source>
        <translation>翻訳</translation>
    </message>
    <message>
        <source>翻譯一段文字；含漢字的文字一律譯成英文。TEXT 為 - 時讀取標準輸入</source>
        <translation>テキストを翻訳する（漢字を含むテキストは英語に翻訳）。TEXT が - なら標準入力を読む</translation>
    </message>
    <message>
        <source>翻譯中</source>
        <translation>翻訳中</translation>
    </message>
    <message>
        <source>翻譯原文</source>
        <translation>翻訳する原文</translation>
    </message>
    <message>
        <source>翻譯單位</source>
        <translation>翻訳の単位</translation>
    </message>
    <message>
        <source>翻譯圖片中的文字，將譯文畫在原文之上</source>
        <translation>画像のテキストを翻訳し、訳文を原文の上に描く</translation>
    </message>
    <message>
        <source>翻譯失敗</source>
        <translation>翻訳に失敗しました</translation>
    </message>
    <message>
        <source>翻譯完成後自動複製到剪貼簿</source>
        <translation>翻訳が終わったらクリップボードにコピー</translation>
    </message>
    <message>
        <source>翻譯引擎</source>
        <translation>翻訳エンジン</translation>
    </message>
    <message>
        <source>翻譯成 CODE 語言（例如 zh-Hant、en、ja），不改變設定</source>
        <translation>今回だけ CODE の言語（zh-Hant、en、ja など）に翻訳する</translation>
    </message>
    <message>
        <source>翻譯板</source>
        <translation>翻訳パネル</translation>
    </message>
    <message>
        <source>翻譯模型</source>
        <translation>翻訳モデル</translation>
    </message>
    <message>
        <source>翻譯模型能在這部電腦上翻譯任何文字。只有在您按下按鈕時才會下載；您的文字不會傳出。</source>
        <translation>翻訳モデルを使うと、どんな文章もこのコンピューターで翻訳できます。ボタンを押したときだけダウンロードされ、文章が送信されることはありません。</translation>
    </message>
    <message>
        <source>翻譯歷史紀錄</source>
        <translation>翻訳履歴</translation>
    </message>
    <message>
        <source>翻譯目前區域</source>
        <translation>現在の範囲を翻訳</translation>
    </message>
    <message>
        <source>翻譯目前區域：</source>
        <translation>現在の範囲を翻訳：</translation>
    </message>
    <message>
        <source>翻譯目前區域；翻譯板隱藏時先顯示</source>
        <translation>現在の範囲を翻訳する。翻訳パネルが隠れているときは先に表示する</translation>
    </message>
    <message>
        <source>翻譯紀錄檔案過大，只讀取了開頭的部分。</source>
        <translation>履歴ファイルが大きすぎるため、先頭の部分だけを読み込みました。</translation>
    </message>
    <message>
        <source>翻譯結果會顯示在這裡</source>
        <translation>訳文はここに表示されます</translation>
    </message>
    <message>
        <source>自動模式會在移動或縮放後翻譯；手動模式移動只做對照，使用點擊、按鈕或快捷鍵才更新。</source>
        <translation>自動モードでは、移動やサイズ変更のあとに翻訳します。手動モードでは、クリック、ボタン、ショートカットのときだけ更新します。</translation>
    </message>
    <message>
        <source>自動調整文字大小</source>
        <translation>文字サイズを自動調整</translation>
    </message>
    <message>
        <source>自動辨識</source>
        <translation>自動認識</translation>
    </message>
    <message>
        <source>自動辨識（移動或縮放後）</source>
        <translation>自動（移動・サイズ変更のあと）</translation>
    </message>
    <message>
        <source>自動（依目標語言）</source>
        <translation>自動（翻訳先の言語による）</translation>
    </message>
    <message>
        <source>自訂文字大小：%d pt</source>
        <translation>文字サイズ：%d pt</translation>
    </message>
    <message>
        <source>與伺服器的連線已中斷</source>
        <translation>サーバーとの接続が切れました</translation>
    </message>
    <message>
        <source>英文</source>
        <translation>英語</translation>
    </message>
    <message>
        <source>複製</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>複製全部翻譯</source>
        <translation>すべての訳文をコピー</translation>
    </message>
    <message>
        <source>複製原文</source>
        <translation>原文をコピー</translation>
    </message>
    <message>
        <source>複製翻譯</source>
        <translation>訳文をコピー</translation>
    </message>
    <message>
        <source>複製翻譯結果</source>
        <translation>訳文をコピー</translation>
    </message>
    <message>
        <source>複製這一段的翻譯</source>
        <translation>この段落の訳文をコピー</translation>
    </message>
    <message>
        <source>複製這一行的翻譯</source>
        <translation>この行の訳文をコピー</translation>
    </message>
    <message>
        <source>要求已取消</source>
        <translation>要求がキャンセルされました</translation>
    </message>
    <message>
        <source>視窗</source>
        <translation>ウィンドウ</translation>
    </message>
    <message>
        <source>視窗管理員</source>
        <translation>ウィンドウマネージャー</translation>
    </message>
    <message>
        <source>記錄已暫停：新的翻譯不會加入歷史紀錄。</source>
        <translation>記録を一時停止中：新しい翻訳は履歴に追加されません。</translation>
    </message>
    <message>
        <source>設定</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>設定…</source>
        <translation>設定…</translation>
    </message>
    <message>
        <source>設定後，可在任何情境下呼叫/隱藏翻譯板。默認為 ⌥T。欲清除請按 ESC。</source>
        <translation>どこからでも翻訳パネルを表示したり隠したりできます。デフォルトは Alt+T です。Esc でキャンセルできます。</translation>
    </message>
    <message>
        <source>試算表（CSV）…</source>
        <translation>表計算（CSV）…</translation>
    </message>
    <message>
        <source>語言</source>
        <translation>言語</translation>
    </message>
    <message>
        <source>請參閱伺服器的說明</source>
        <translation>サーバーの説明を参照</translation>
    </message>
    <message>
        <source>請在「螢幕與系統錄音」清單中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>「画面収録とシステムオーディオ録音」のリストで Lucentra を有効にしてください。リストに表示されない場合は、左下の「＋」を押して Lucentra.app を追加し、Lucentra を再起動してください。</translation>
    </message>
    <message>
        <source>請在桌面的設定中，為指令 lucentra toggle 與 lucentra translate 設定快速鍵。</source>
        <translation>デスクトップの設定で、コマンド lucentra toggle と lucentra translate にキーを割り当ててください。</translation>
    </message>
    <message>
        <source>請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>システム設定で Lucentra を有効にしてください。リストに表示されない場合は、左下の「＋」を押して Lucentra.app を追加し、Lucentra を再起動してください。</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁同意傳送文字。</source>
        <translation>設定の「翻訳」タブでテキストの送信に同意してください。</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁輸入 API Key。</source>
        <translation>設定の「翻訳」タブで API キーを入力してください。</translation>
    </message>
    <message>
        <source>請將翻譯視窗完整放在同一個螢幕內再試一次</source>
        <translation>翻訳パネル全体を 1 つのディスプレイ内に置いて、もう一度お試しください</translation>
    </message>
    <message>
        <source>請按下組合鍵... (按 ESC 取消)</source>
        <translation>ショートカットを押してください…（Esc でキャンセル）</translation>
    </message>
    <message>
        <source>請檢查 API Key、模型名稱與服務設定</source>
        <translation>API キー、モデル名、サービスの設定を確認してください</translation>
    </message>
    <message>
        <source>請至設定填入 %@ API Key</source>
        <translation>設定で %@ の API キーを入力してください</translation>
    </message>
    <message>
        <source>請至設定填入 Microsoft Azure API Key</source>
        <translation>設定で Microsoft Azure の API キーを入力してください</translation>
    </message>
    <message>
        <source>請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。</source>
        <translation>テキスト全体が枠の中に収まるように翻訳パネルの位置や大きさを調整して、もう一度お試しください。</translation>
    </message>
    <message>
        <source>譯文字型</source>
        <translation>訳文のフォント</translation>
    </message>
    <message>
        <source>譯文最多為原文的 X 倍長，以模型的單位計；預設為 2.0</source>
        <translation>訳文の長さは原文の X 倍まで（モデルの単位）。既定は 2.0</translation>
    </message>
    <message>
        <source>讓譯文即時跟隨翻譯板下的畫面</source>
        <translation>翻訳パネルの下の画面の変化に合わせて翻訳を更新する</translation>
    </message>
    <message>
        <source>貼上</source>
        <translation>貼り付け</translation>
    </message>
    <message>
        <source>資料傳送與隱私</source>
        <translation>データの送信とプライバシー</translation>
    </message>
    <message>
        <source>資料夾裡沒有模型的這個檔案，或無法讀取：%@</source>
        <translation>フォルダにモデルのこのファイルがないか、読み込めません：%@</translation>
    </message>
    <message>
        <source>資料（JSON）…</source>
        <translation>データ（JSON）…</translation>
    </message>
    <message>
        <source>跟隨介面語言</source>
        <translation>表示言語に合わせる</translation>
    </message>
    <message>
        <source>跟隨系統</source>
        <translation>システムに合わせる</translation>
    </message>
    <message>
        <source>輸入或貼上要翻譯的文字</source>
        <translation>翻訳するテキストを入力または貼り付け</translation>
    </message>
    <message>
        <source>辨識</source>
        <translation>認識</translation>
    </message>
    <message>
        <source>辨識圖片中的文字，逐行輸出為 JSON</source>
        <translation>画像のテキストを認識し、行ごとに JSON で出力する</translation>
    </message>
    <message>
        <source>辨識或輸入的文字會傳送至 %@ 以產生翻譯；內容的處理方式受該服務的隱私政策約束。Lucentra 沒有中繼伺服器，也不會將副本傳給開發者。</source>
        <translation>認識または入力されたテキストは翻訳のため %@ に送信され、その扱いは同サービスのプライバシーポリシーに従います。Lucentra に中継サーバーはなく、開発者に写しが送られることもありません。</translation>
    </message>
    <message>
        <source>逐行</source>
        <translation>行ごと</translation>
    </message>
    <message>
        <source>逐行翻譯會切斷句子。若譯文不通順，請在設定的「翻譯」中把「翻譯單位」改為「段落」。</source>
        <translation>行ごとの翻訳では文が途切れます。訳が不自然なときは、設定の「翻訳」で「翻訳の単位」を「段落ごと」にしてください。</translation>
    </message>
    <message>
        <source>這些翻譯模型無法使用，檔案可能已損壞：%@。請移除後重新下載。</source>
        <translation>これらの翻訳モデルは使えません。ファイルが壊れている可能性があります：%@。削除してからもう一度ダウンロードしてください。</translation>
    </message>
    <message>
        <source>這個 X 伺服器缺少擷取畫面所需的功能：%@</source>
        <translation>この X サーバーには、画面のキャプチャに必要な機能がありません：%@</translation>
    </message>
    <message>
        <source>這個桌面不提供畫面分享。請安裝後重新登入：%@</source>
        <translation>このデスクトップでは画面を共有できません。次のコマンドでインストールし、ログインし直してください：%@</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請再次啟動 Lucentra。</source>
        <translation>このデスクトップにはシステムトレイがありません。翻訳パネルを再び表示するには、Lucentra をもう一度起動してください。</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。</source>
        <translation>このデスクトップにはシステムトレイがありません。翻訳パネルを再び表示するには、%@ を押すか、Lucentra をもう一度起動してください。</translation>
    </message>
    <message>
        <source>這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。</source>
        <translation>このシステムの dpkg は訳文をインストールしない設定（path-exclude）です。先に設定を変更してください。</translation>
    </message>
    <message>
        <source>這個翻譯模型由系統安裝，無法在這裡移除。</source>
        <translation>この翻訳モデルはシステムのもので、ここでは削除できません。</translation>
    </message>
    <message>
        <source>這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。</source>
        <translation>このコンピューターのプログラムには、このテキストの訳文がありません。別の翻訳エンジンをお使いください。</translation>
    </message>
    <message>
        <source>這部電腦上的翻譯模型：</source>
        <translation>このコンピューターの翻訳モデル：</translation>
    </message>
    <message>
        <source>這部電腦可以翻譯：</source>
        <translation>このコンピューターで翻訳できる言語：</translation>
    </message>
    <message>
        <source>這部電腦已經能翻譯程式的選單與訊息。網頁、遊戲等其他文字需要翻譯模型，下載一次即可離線使用。</source>
        <translation>このパソコンは、プログラムのメニューやメッセージならすでに翻訳できます。ウェブページやゲームなどの文章には翻訳モデルが必要です。一度ダウンロードすれば、オフラインで使えます。</translation>
    </message>
    <message>
        <source>這部電腦沒有鑰匙圈服務，無法保存 API Key。請安裝後重新登入：%@</source>
        <translation>このコンピューターにはキーリングのサービスがないため、API キーを保存できません。次のコマンドでインストールし、ログインし直してください：%@</translation>
    </message>
    <message>
        <source>這部電腦無法翻譯這種語言。請改用其他翻譯引擎。</source>
        <translation>このコンピューターではこの言語を翻訳できません。別の翻訳エンジンをお使いください。</translation>
    </message>
    <message>
        <source>這部電腦還沒有能翻譯這些文字的模型。請在設定的「翻譯」分頁下載：%@</source>
        <translation>このテキストを翻訳できるモデルがまだありません。設定の「翻訳」タブでダウンロードしてください：%@</translation>
    </message>
    <message>
        <source>連線失敗：%@</source>
        <translation>接続失敗：%@</translation>
    </message>
    <message>
        <source>連線成功：%@</source>
        <translation>接続成功：%@</translation>
    </message>
    <message>
        <source>連線逾時，請稍後再試</source>
        <translation>接続がタイムアウトしました。しばらくしてからもう一度お試しください</translation>
    </message>
    <message>
        <source>選項 %@ 不接受值</source>
        <translation>オプション %@ は値を取りません</translation>
    </message>
    <message>
        <source>選項 %@ 的值無效：%@</source>
        <translation>オプション %@ の値が正しくありません：%@</translation>
    </message>
    <message>
        <source>選項 %@ 需要一個值</source>
        <translation>オプション %@ には値が必要です</translation>
    </message>
    <message>
        <source>還原</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>邊框發光顏色：</source>
        <translation>枠の光の色：</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>重新翻譯</source>
        <translation>もう一度翻訳</translation>
    </message>
    <message>
        <source>重試</source>
        <translation>再試行</translation>
    </message>
    <message>
        <source>重試翻譯</source>
        <translation>翻訳を再試行</translation>
    </message>
    <message>
        <source>鑰匙圈</source>
        <translation>キーリング</translation>
    </message>
    <message>
        <source>鑰匙圈已鎖定。請在系統詢問時解鎖；API Key 會在下次嘗試時讀取或存入。</source>
        <translation>キーリングがロックされています。システムに尋ねられたらロックを解除してください。API キーは次に試したときに読み込むか保存します。</translation>
    </message>
    <message>
        <source>鑰匙圈沒有回應，API Key 尚未讀取或存入。請稍後再試。</source>
        <translation>キーリングが応答しないため、API キーの読み込みも保存もできていません。しばらくしてからもう一度お試しください。</translation>
    </message>
    <message>
        <source>開啟 / 停止即時翻譯：</source>
        <translation>リアルタイム翻訳の開始/停止：</translation>
    </message>
    <message>
        <source>開啟或停止即時翻譯</source>
        <translation>リアルタイム翻訳を開始または停止する</translation>
    </message>
    <message>
        <source>開啟系統設定</source>
        <translation>システム設定を開く</translation>
    </message>
    <message>
        <source>開啟翻譯歷史紀錄視窗</source>
        <translation>翻訳履歴のウィンドウを開く</translation>
    </message>
    <message>
        <source>開啟設定視窗</source>
        <translation>設定のウィンドウを開く</translation>
    </message>
    <message>
        <source>開機自動啟動</source>
        <translation>ログイン時に起動</translation>
    </message>
    <message>
        <source>閱讀隱私權政策</source>
        <translation>プライバシーポリシーを読む</translation>
    </message>
    <message>
        <source>關於</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>關於 Lucentra｜澄鏡通</source>
        <translation>Lucentra について</translation>
    </message>
    <message>
        <source>關閉</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>隱藏 API Key</source>
        <translation>API キーを隠す</translation>
    </message>
    <message>
        <source>隱藏 Lucentra</source>
        <translation>Lucentra を隠す</translation>
    </message>
    <message>
        <source>隱藏其他項目</source>
        <translation>ほかを隠す</translation>
    </message>
    <message>
        <source>隱藏翻譯板</source>
        <translation>翻訳パネルを隠す</translation>
    </message>
    <message>
        <source>雙擊玻璃板即可翻譯</source>
        <translation>翻訳パネルをダブルクリックすると翻訳します</translation>
    </message>
    <message>
        <source>雙擊翻譯</source>
        <translation>ダブルクリックで翻訳</translation>
    </message>
    <message>
        <source>雙擊翻譯（建議）</source>
        <translation>ダブルクリックで翻訳（推奨）</translation>
    </message>
    <message>
        <source>需要「螢幕錄影」權限</source>
        <translation>「画面収録」の許可が必要です</translation>
    </message>
    <message>
        <source>需要螢幕錄製權限</source>
        <translation>画面収録の許可が必要です</translation>
    </message>
    <message>
        <source>韓文</source>
        <translation>韓国語</translation>
    </message>
    <message>
        <source>顯示 / 隱藏翻譯視窗：</source>
        <translation>翻訳パネルの表示/非表示：</translation>
    </message>
    <message>
        <source>顯示 API Key</source>
        <translation>API キーを表示</translation>
    </message>
    <message>
        <source>顯示/隱藏 翻譯板</source>
        <translation>翻訳パネルの表示/非表示</translation>
    </message>
    <message>
        <source>顯示全部</source>
        <translation>すべて表示</translation>
    </message>
    <message>
        <source>顯示或隱藏翻譯板</source>
        <translation>翻訳パネルの表示/非表示を切り替える</translation>
    </message>
    <message>
        <source>顯示翻譯板</source>
        <translation>翻訳パネルを表示する</translation>
    </message>
    <message>
        <source>點擊玻璃板</source>
        <translation>翻訳パネルのクリック</translation>
    </message>
</context>
</TS>
