<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>%@ API URL 無效</source>
        <translation>%@ API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>%@ API 錯誤 %d：%@</source>
        <translation>%@ API 오류 %d: %@</translation>
    </message>
    <message>
        <source>%@ 回應格式無法解析</source>
        <translation>%@의 응답 형식을 해석할 수 없습니다</translation>
    </message>
    <message>
        <source>%@・拖曳移動</source>
        <translation>%@ · 드래그하여 이동</translation>
    </message>
    <message>
        <source>%@：%@，共 %@</source>
        <translation>%@: %@ / %@</translation>
    </message>
    <message>
        <source>%d 個詞句</source>
        <translation>어구 %d개</translation>
    </message>
    <message>
        <source>%d 個語言組合</source>
        <translation>언어 조합 %d개</translation>
    </message>
    <message>
        <source>%d 分鐘前建立</source>
        <translation>%d분 전에 생성</translation>
    </message>
    <message>
        <source>%d 天前建立</source>
        <translation>%d일 전에 생성</translation>
    </message>
    <message>
        <source>%d 小時前建立</source>
        <translation>%d시간 전에 생성</translation>
    </message>
    <message>
        <source>AI 翻譯</source>
        <translation>AI 번역</translation>
    </message>
    <message>
        <source>API Base URL</source>
        <translation>API 기본 URL</translation>
    </message>
    <message>
        <source>API Key</source>
        <translation>API 키</translation>
    </message>
    <message>
        <source>API Key 或設定含有無法傳送的字元</source>
        <translation>API 키 또는 설정에 전송할 수 없는 문자가 있습니다</translation>
    </message>
    <message>
        <source>API Key 會安全存放於 macOS Keychain。</source>
        <translation>API 키는 이 컴퓨터의 키 모음에 안전하게 보관됩니다.</translation>
    </message>
    <message>
        <source>API Key 為選填，若留空則使用免費版（有流量與請求頻率限制）。</source>
        <translation>API 키는 선택 사항입니다. 비워 두면 무료 버전을 사용합니다(용량과 요청 빈도에 제한이 있음).</translation>
    </message>
    <message>
        <source>Apple 內建翻譯</source>
        <translation>내장 번역</translation>
    </message>
    <message>
        <source>Apple 內建翻譯需升級至 macOS 15</source>
        <translation>Apple 내장 번역을 사용하려면 macOS 15로 업그레이드해야 합니다</translation>
    </message>
    <message>
        <source>Apple 翻譯</source>
        <translation>이 컴퓨터에서 번역</translation>
    </message>
    <message>
        <source>Apple 翻譯失敗</source>
        <translation>Apple 번역에 실패했습니다</translation>
    </message>
    <message>
        <source>Azure 翻譯必須填寫 API Key 與對應的地區。</source>
        <translation>Azure 번역에는 API 키와 해당 리전이 필요합니다.</translation>
    </message>
    <message>
        <source>Claude 設定</source>
        <translation>Claude 설정</translation>
    </message>
    <message>
        <source>DeepL Free 與 Pro 金鑰皆可使用，App 會自動選擇對應端點。</source>
        <translation>DeepL Free와 Pro의 API 키를 모두 사용할 수 있으며, 맞는 엔드포인트가 자동으로 선택됩니다.</translation>
    </message>
    <message>
        <source>DeepL 設定</source>
        <translation>DeepL 설정</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Gemini AI 設定</source>
        <translation>Gemini AI 설정</translation>
    </message>
    <message>
        <source>Gemini 翻譯必須填寫 API Key。</source>
        <translation>Gemini 번역에는 API 키가 필요합니다.</translation>
    </message>
    <message>
        <source>Google 免費翻譯</source>
        <translation>Google 무료 번역</translation>
    </message>
    <message>
        <source>Google 翻譯</source>
        <translation>Google 번역</translation>
    </message>
    <message>
        <source>Google 翻譯設定</source>
        <translation>Google 번역 설정</translation>
    </message>
    <message>
        <source>JSON Array parse error</source>
        <translation>Gemini의 번역문이 올바른 JSON이 아닙니다</translation>
    </message>
    <message>
        <source>JSON encode error</source>
        <translation>텍스트를 JSON으로 변환할 수 없습니다</translation>
    </message>
    <message>
        <source>Lucentra 在 Wayland 工作階段中需要 XWayland，但找不到它（沒有設定 DISPLAY）。</source>
        <translation>Wayland 세션에서 Lucentra에는 XWayland가 필요하지만 찾을 수 없습니다(DISPLAY가 설정되지 않음).</translation>
    </message>
    <message>
        <source>Lucentra 沒有在執行。</source>
        <translation>Lucentra가 실행 중이 아닙니다.</translation>
    </message>
    <message>
        <source>Lucentra 沒有執行這個指令。</source>
        <translation>Lucentra가 이 명령을 실행하지 않았습니다.</translation>
    </message>
    <message>
        <source>Lucentra 無法啟動。</source>
        <translation>Lucentra를 시작할 수 없습니다.</translation>
    </message>
    <message>
        <source>Lucentra 的一部分無法載入，請重新安裝 Lucentra。（%@）</source>
        <translation>Lucentra의 일부를 불러올 수 없습니다. Lucentra를 다시 설치하세요. (%@)</translation>
    </message>
    <message>
        <source>Lucentra 需要圖形桌面（沒有設定 DISPLAY）。</source>
        <translation>Lucentra에는 그래픽 데스크톱이 필요합니다(DISPLAY가 설정되지 않음).</translation>
    </message>
    <message>
        <source>Lucentra：翻譯螢幕上的文字</source>
        <translation>Lucentra: 화면의 텍스트를 번역</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通</source>
        <translation>Lucentra｜澄鏡通</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通 設定</source>
        <translation>Lucentra 설정</translation>
    </message>
    <message>
        <source>Microsoft Azure 翻譯</source>
        <translation>Microsoft Azure 번역</translation>
    </message>
    <message>
        <source>Microsoft Azure 設定</source>
        <translation>Microsoft Azure 설정</translation>
    </message>
    <message>
        <source>OpenAI 相容 API</source>
        <translation>OpenAI 호환 API</translation>
    </message>
    <message>
        <source>OpenAI 相容 API 設定</source>
        <translation>OpenAI 호환 API 설정</translation>
    </message>
    <message>
        <source>OpenAI 設定</source>
        <translation>OpenAI 설정</translation>
    </message>
    <message>
        <source>Request prepare error</source>
        <translation>네트워크 요청을 준비하지 못했습니다</translation>
    </message>
    <message>
        <source>Response parse error</source>
        <translation>Gemini의 응답을 해석할 수 없습니다</translation>
    </message>
    <message>
        <source>Wayland 的圖層；合成器支援</source>
        <translation>Wayland 레이어 서피스(컴포지터가 지원함)</translation>
    </message>
    <message>
        <source>X11 視窗</source>
        <translation>X11 창</translation>
    </message>
    <message>
        <source>X11 視窗（XWayland）；合成器不支援圖層</source>
        <translation>X11 창(XWayland), 컴포지터가 레이어 서피스를 지원하지 않음</translation>
    </message>
    <message>
        <source>lucentra --help 列出所有指令</source>
        <translation>lucentra --help로 모든 명령을 볼 수 있습니다</translation>
    </message>
    <message>
        <source>⚠️ API Key 為空，將無法進行翻譯！</source>
        <translation>⚠️ API 키가 비어 있어 번역할 수 없습니다!</translation>
    </message>
    <message>
        <source>⚠️ 請先在翻譯設定中允許將文字傳送至 %@。</source>
        <translation>⚠️ 먼저 번역 설정에서 %@(으)로의 텍스트 전송을 허용하세요.</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入相容 API Key</source>
        <translation>⚠️ 설정에서 호환 API 키를 입력하세요</translation>
    </message>
    <message>
        <source>✓ 將使用 Google 免費版（有流量與請求頻率限制）</source>
        <translation>✓ Google 무료 버전을 사용합니다(용량과 요청 빈도에 제한이 있음)</translation>
    </message>
    <message>
        <source>❌ API 回應格式錯誤或金鑰無效</source>
        <translation>❌ API 응답 형식이 잘못되었거나 API 키가 유효하지 않습니다</translation>
    </message>
    <message>
        <source>❌ Gemini API 錯誤 %d：%@</source>
        <translation>❌ Gemini API 오류 %d: %@</translation>
    </message>
    <message>
        <source>❌ 網路請求準備失敗</source>
        <translation>❌ 네트워크 요청을 준비하지 못했습니다</translation>
    </message>
    <message>
        <source>❌ 網路錯誤：%@</source>
        <translation>❌ 네트워크 오류: %@</translation>
    </message>
    <message>
        <source>❌ 翻譯失敗：%@</source>
        <translation>❌ 번역하지 못했습니다: %@</translation>
    </message>
    <message>
        <source>「!」標出 %d 個可以改善之處。</source>
        <translation>“!”는 개선할 수 있는 점을 나타냅니다: %d개.</translation>
    </message>
    <message>
        <source>一般</source>
        <translation>일반</translation>
    </message>
    <message>
        <source>下載 %@</source>
        <translation>%@ 다운로드</translation>
    </message>
    <message>
        <source>下載中斷。已下載的部分會保留，可以稍後繼續。</source>
        <translation>다운로드가 중단되었습니다. 받은 부분은 보관되어 나중에 이어받을 수 있습니다.</translation>
    </message>
    <message>
        <source>下載的檔案內容不符，已捨棄。</source>
        <translation>내려받은 파일의 내용이 맞지 않아 버렸습니다.</translation>
    </message>
    <message>
        <source>下載的檔案大小不符，已捨棄。</source>
        <translation>내려받은 파일의 크기가 맞지 않아 버렸습니다.</translation>
    </message>
    <message>
        <source>下載翻譯 PAIR（例如 en-ja）所需的模型；必要時經由英文</source>
        <translation>PAIR(예: en-ja)를 번역할 모델을 내려받습니다. 필요하면 영어를 거칩니다</translation>
    </message>
    <message>
        <source>不支援的圖片格式</source>
        <translation>지원하지 않는 그림 형식입니다</translation>
    </message>
    <message>
        <source>不支援這種模型：%@</source>
        <translation>이 종류의 모델은 지원되지 않습니다: %@</translation>
    </message>
    <message>
        <source>不是可辨識的圖片格式：%@</source>
        <translation>알 수 없는 그림 형식입니다: %@</translation>
    </message>
    <message>
        <source>不是語言組合：%@</source>
        <translation>언어 쌍이 아닙니다: %@</translation>
    </message>
    <message>
        <source>介面語言</source>
        <translation>인터페이스 언어</translation>
    </message>
    <message>
        <source>伺服器沒有這個語言的翻譯模型。</source>
        <translation>서버에 이 언어의 번역 모델이 없습니다.</translation>
    </message>
    <message>
        <source>伺服器的回應不是有效的 HTTP 回應</source>
        <translation>서버의 응답이 올바른 HTTP 응답이 아닙니다</translation>
    </message>
    <message>
        <source>伺服器的回應過大</source>
        <translation>서버의 응답이 너무 큽니다</translation>
    </message>
    <message>
        <source>伺服器的安全憑證無效</source>
        <translation>서버의 보안 인증서가 유효하지 않습니다</translation>
    </message>
    <message>
        <source>伺服器的模型清單無法使用。</source>
        <translation>서버의 모델 목록을 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>使用第 N 個翻譯引擎（0 至 7），不改變設定</source>
        <translation>이번만 번역 엔진 N(0~7) 사용</translation>
    </message>
    <message>
        <source>來源語言</source>
        <translation>원본 언어</translation>
    </message>
    <message>
        <source>停止即時翻譯</source>
        <translation>실시간 번역 중지</translation>
    </message>
    <message>
        <source>停止輸入後自動翻譯</source>
        <translation>입력을 멈추면 자동으로 번역합니다</translation>
    </message>
    <message>
        <source>允許將文字傳送至 %@</source>
        <translation>%@(으)로 텍스트 전송 허용</translation>
    </message>
    <message>
        <source>全域快捷鍵</source>
        <translation>전역 단축키</translation>
    </message>
    <message>
        <source>全選</source>
        <translation>모두 선택</translation>
    </message>
    <message>
        <source>全部顯示</source>
        <translation>모두 표시</translation>
    </message>
    <message>
        <source>分享畫面…</source>
        <translation>화면 공유…</translation>
    </message>
    <message>
        <source>分享的不是翻譯板所在的螢幕。請再試一次，並選擇翻譯板所在的螢幕。</source>
        <translation>공유한 화면에 번역 패널이 없습니다. 다시 시도하여 번역 패널이 있는 화면을 선택하세요.</translation>
    </message>
    <message>
        <source>切換到手動輸入</source>
        <translation>직접 입력으로 전환</translation>
    </message>
    <message>
        <source>切換回框選翻譯</source>
        <translation>영역 번역으로 돌아가기</translation>
    </message>
    <message>
        <source>切換為框選翻譯</source>
        <translation>영역 번역으로 전환</translation>
    </message>
    <message>
        <source>切換為框選翻譯 (當前:自動辨識)</source>
        <translation>영역 번역으로 전환(현재: 자동 인식)</translation>
    </message>
    <message>
        <source>切換為自動辨識</source>
        <translation>자동 인식으로 전환</translation>
    </message>
    <message>
        <source>切換為自動辨識 (當前:框選翻譯)</source>
        <translation>자동 인식으로 전환(현재: 영역 번역)</translation>
    </message>
    <message>
        <source>切換目標語言</source>
        <translation>대상 언어 변경</translation>
    </message>
    <message>
        <source>列出在這部電腦上翻譯的服務與語言</source>
        <translation>이 컴퓨터에서 번역하는 서비스와 언어를 나열</translation>
    </message>
    <message>
        <source>列出歷史紀錄</source>
        <translation>기록을 나열</translation>
    </message>
    <message>
        <source>列出這部電腦上的環境、有什麼不對、如何改善；不含密鑰與擷取的文字</source>
        <translation>이 컴퓨터의 환경과 문제점, 해결 방법을 보여 줍니다. 키나 캡처한 글자는 포함하지 않습니다</translation>
    </message>
    <message>
        <source>列出這部電腦上與伺服器提供的翻譯模型</source>
        <translation>이 컴퓨터와 서버의 번역 모델을 나열합니다</translation>
    </message>
    <message>
        <source>刪除</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>刪除此筆翻譯</source>
        <translation>이 번역 삭제</translation>
    </message>
    <message>
        <source>剪下</source>
        <translation>잘라내기</translation>
    </message>
    <message>
        <source>加入桌面設定檔的一行：</source>
        <translation>데스크톱 설정 파일에 추가할 줄:</translation>
    </message>
    <message>
        <source>匯出的格式；未指定時依 FILE 的副檔名，否則為 csv</source>
        <translation>내보내기 형식. 생략하면 FILE의 확장자를 따르고, 없으면 csv</translation>
    </message>
    <message>
        <source>匯出顯示的紀錄</source>
        <translation>표시된 기록 내보내기</translation>
    </message>
    <message>
        <source>即時翻譯</source>
        <translation>실시간 번역</translation>
    </message>
    <message>
        <source>即時翻譯中</source>
        <translation>실시간 번역 중</translation>
    </message>
    <message>
        <source>即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）</source>
        <translation>실시간 번역(이 데스크톱에서는 번역 패널이 깜박이므로 사용할 수 없음)</translation>
    </message>
    <message>
        <source>即時翻譯：開</source>
        <translation>실시간 번역: 켬</translation>
    </message>
    <message>
        <source>即時翻譯：關</source>
        <translation>실시간 번역: 끔</translation>
    </message>
    <message>
        <source>原文</source>
        <translation>원문</translation>
    </message>
    <message>
        <source>取得翻譯模型…</source>
        <translation>번역 모델 받기…</translation>
    </message>
    <message>
        <source>取消下載</source>
        <translation>다운로드 취소</translation>
    </message>
    <message>
        <source>取消收藏</source>
        <translation>별표 제거</translation>
    </message>
    <message>
        <source>古典透白 (Classic White - 預設)</source>
        <translation>클래식 화이트(기본값)</translation>
    </message>
    <message>
        <source>另一個下載正在進行。</source>
        <translation>다른 다운로드가 진행 중입니다.</translation>
    </message>
    <message>
        <source>只包含原文或譯文中有 TEXT 的紀錄</source>
        <translation>원문이나 번역문에 TEXT가 있는 기록만</translation>
    </message>
    <message>
        <source>只用 FOLDER 中的模型逐句翻譯標準輸入，每行一句</source>
        <translation>FOLDER의 모델만으로 표준 입력을 한 줄에 한 문장씩 번역합니다</translation>
    </message>
    <message>
        <source>可以下載的翻譯模型：</source>
        <translation>내려받을 수 있는 번역 모델:</translation>
    </message>
    <message>
        <source>可以使用</source>
        <translation>사용할 수 있음</translation>
    </message>
    <message>
        <source>可用性檢查</source>
        <translation>사용 가능 여부 확인</translation>
    </message>
    <message>
        <source>可連接 OpenRouter、Ollama 或其他支援 Chat Completions 的服務；非本機網址必須使用 HTTPS。</source>
        <translation>OpenRouter, Ollama 등 Chat Completions를 지원하는 서비스에 연결할 수 있습니다. 이 컴퓨터 외의 주소는 HTTPS를 사용해야 합니다.</translation>
    </message>
    <message>
        <source>合成器</source>
        <translation>컴포지터</translation>
    </message>
    <message>
        <source>合成器不允許擷取畫面。請安裝套件，而不是直接從原始碼執行。</source>
        <translation>컴포지터가 화면 캡처를 허용하지 않습니다. 소스에서 실행하지 말고 패키지를 설치하세요.</translation>
    </message>
    <message>
        <source>同時輸出各階段所需的毫秒數</source>
        <translation>단계별 소요 시간(밀리초)도 출력</translation>
    </message>
    <message>
        <source>同時輸出每一行的譯文與位置</source>
        <translation>각 줄의 번역문과 위치도 출력</translation>
    </message>
    <message>
        <source>否</source>
        <translation>아니요</translation>
    </message>
    <message>
        <source>單字卡（以定位字元分隔）…</source>
        <translation>단어 카드(탭으로 구분)…</translation>
    </message>
    <message>
        <source>單擊玻璃板即可翻譯</source>
        <translation>번역 패널을 클릭하면 번역합니다</translation>
    </message>
    <message>
        <source>單擊翻譯</source>
        <translation>클릭하여 번역</translation>
    </message>
    <message>
        <source>回應內容不是有效的 JSON</source>
        <translation>응답이 올바른 JSON이 아닙니다</translation>
    </message>
    <message>
        <source>圖片已損壞或無法解碼：%@</source>
        <translation>그림이 손상되었거나 디코딩할 수 없습니다: %@</translation>
    </message>
    <message>
        <source>圖片檔案是空的：%@</source>
        <translation>그림 파일이 비어 있습니다: %@</translation>
    </message>
    <message>
        <source>圖片過大（%d × %d 像素）：%@</source>
        <translation>그림이 너무 큽니다(%d × %d픽셀): %@</translation>
    </message>
    <message>
        <source>在下方 Dock 欄顯示圖示</source>
        <translation>작업 표시줄에 표시</translation>
    </message>
    <message>
        <source>在桌面的設定中變更…</source>
        <translation>데스크톱 설정에서 변경…</translation>
    </message>
    <message>
        <source>在歷史紀錄中開啟</source>
        <translation>기록에서 열기</translation>
    </message>
    <message>
        <source>在這部電腦上翻譯</source>
        <translation>이 컴퓨터에서의 번역</translation>
    </message>
    <message>
        <source>地區</source>
        <translation>리전</translation>
    </message>
    <message>
        <source>執行中的 Lucentra</source>
        <translation>실행 중인 Lucentra</translation>
    </message>
    <message>
        <source>外觀</source>
        <translation>모양</translation>
    </message>
    <message>
        <source>多餘的參數：%@</source>
        <translation>불필요한 인수: %@</translation>
    </message>
    <message>
        <source>失去焦點時自動隱藏玻璃板</source>
        <translation>포커스를 잃으면 번역 패널 자동 숨기기</translation>
    </message>
    <message>
        <source>安裝這些套件也有幫助：%@</source>
        <translation>다음 패키지를 설치해도 도움이 됩니다: %@</translation>
    </message>
    <message>
        <source>將圖片寫入 OUT.png</source>
        <translation>그림을 OUT.png에 저장</translation>
    </message>
    <message>
        <source>將屬於同一段落的各行合併</source>
        <translation>한 단락에 속한 줄을 합칩니다</translation>
    </message>
    <message>
        <source>將歷史紀錄匯出到 FILE；只讀取，不改變紀錄</source>
        <translation>기록을 FILE로 내보내기(읽기만 함)</translation>
    </message>
    <message>
        <source>尚未下載完成</source>
        <translation>다운로드 미완료</translation>
    </message>
    <message>
        <source>尚未建立</source>
        <translation>아직 없음</translation>
    </message>
    <message>
        <source>尚未有任何翻譯紀錄</source>
        <translation>아직 번역 기록이 없습니다</translation>
    </message>
    <message>
        <source>工作階段</source>
        <translation>세션</translation>
    </message>
    <message>
        <source>已刪除 %d 筆紀錄</source>
        <translation>기록 %d개를 삭제했습니다</translation>
    </message>
    <message>
        <source>已刪除 1 筆紀錄</source>
        <translation>기록 1개를 삭제했습니다</translation>
    </message>
    <message>
        <source>已取消下載。</source>
        <translation>다운로드를 취소했습니다.</translation>
    </message>
    <message>
        <source>已同意</source>
        <translation>동의함</translation>
    </message>
    <message>
        <source>已安裝此語言所需的翻譯模型。</source>
        <translation>이 언어에 필요한 번역 모델이 설치되어 있습니다.</translation>
    </message>
    <message>
        <source>已安裝的翻譯模型：%@</source>
        <translation>설치된 번역 모델: %@</translation>
    </message>
    <message>
        <source>已安裝：%@</source>
        <translation>설치함: %@</translation>
    </message>
    <message>
        <source>已收藏</source>
        <translation>별표 표시됨</translation>
    </message>
    <message>
        <source>已清除未收藏的紀錄</source>
        <translation>별표 없는 기록을 지웠습니다</translation>
    </message>
    <message>
        <source>已移除：%@</source>
        <translation>제거함: %@</translation>
    </message>
    <message>
        <source>已經安裝最新的翻譯模型。</source>
        <translation>최신 번역 모델이 이미 설치되어 있습니다.</translation>
    </message>
    <message>
        <source>已複製</source>
        <translation>복사됨</translation>
    </message>
    <message>
        <source>已複製原文</source>
        <translation>원문 복사됨</translation>
    </message>
    <message>
        <source>已複製翻譯</source>
        <translation>번역문 복사됨</translation>
    </message>
    <message>
        <source>已選用</source>
        <translation>선택됨</translation>
    </message>
    <message>
        <source>引擎與語系</source>
        <translation>엔진 및 언어</translation>
    </message>
    <message>
        <source>復原</source>
        <translation>실행 취소</translation>
    </message>
    <message>
        <source>快捷鍵</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>快速鍵</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>您目前選用 Apple 內建引擎，支援無限量免費離線翻譯。</source>
        <translation>내장 엔진을 사용 중입니다. 오프라인에서 제한 없이 무료로 번역할 수 있습니다.</translation>
    </message>
    <message>
        <source>您設定的相容 API 端點</source>
        <translation>설정한 호환 API 엔드포인트</translation>
    </message>
    <message>
        <source>所選服務</source>
        <translation>선택한 서비스</translation>
    </message>
    <message>
        <source>所需的翻譯模型：%@</source>
        <translation>필요한 번역 모델: %@</translation>
    </message>
    <message>
        <source>手動翻譯（點擊或快捷鍵）</source>
        <translation>수동(클릭 또는 단축키)</translation>
    </message>
    <message>
        <source>手動輸入</source>
        <translation>직접 입력</translation>
    </message>
    <message>
        <source>找不到伺服器，請檢查網路連線與網址</source>
        <translation>서버를 찾을 수 없습니다. 네트워크 연결과 주소를 확인하세요</translation>
    </message>
    <message>
        <source>找不到可擷取的翻譯視窗，請確認螢幕錄影權限</source>
        <translation>캡처할 수 있는 번역 패널을 찾을 수 없습니다. 화면 기록 권한을 확인하세요</translation>
    </message>
    <message>
        <source>找不到工作階段匯流排（D-Bus），無法聯絡 Lucentra。</source>
        <translation>세션 버스(D-Bus)를 찾을 수 없어 Lucentra에 연결할 수 없습니다.</translation>
    </message>
    <message>
        <source>找不到符合的紀錄</source>
        <translation>일치하는 기록이 없습니다</translation>
    </message>
    <message>
        <source>找不到翻譯視窗所在的顯示器</source>
        <translation>번역 패널이 있는 디스플레이를 찾을 수 없습니다</translation>
    </message>
    <message>
        <source>把這塊翻譯板拖到您看不懂的文字上。</source>
        <translation>이 번역 패널을 읽을 수 없는 글자 위로 끌어다 놓으세요.</translation>
    </message>
    <message>
        <source>按 %@ 可隨時顯示或隱藏翻譯板。</source>
        <translation>%@ 키를 누르면 언제든지 이 패널을 표시하거나 숨길 수 있습니다.</translation>
    </message>
    <message>
        <source>按住 Option，再按主鍵盤上的 Return（↩）鍵</source>
        <translation>Alt를 누른 채 기본 키보드의 Return(↩)을 누릅니다</translation>
    </message>
    <message>
        <source>授權：%@</source>
        <translation>라이선스: %@</translation>
    </message>
    <message>
        <source>搜尋紀錄...</source>
        <translation>기록 검색…</translation>
    </message>
    <message>
        <source>操作</source>
        <translation>조작</translation>
    </message>
    <message>
        <source>操作模式</source>
        <translation>모드</translation>
    </message>
    <message>
        <source>擷取畫面</source>
        <translation>화면 캡처</translation>
    </message>
    <message>
        <source>收合</source>
        <translation>접기</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>별표 추가</translation>
    </message>
    <message>
        <source>文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。</source>
        <translation>텍스트가 너무 많아 일부 줄을 제시간에 인식하지 못했습니다. 번역 패널을 줄인 뒤 다시 시도하세요.</translation>
    </message>
    <message>
        <source>文字已是目標語言。</source>
        <translation>텍스트가 이미 대상 언어로 되어 있습니다.</translation>
    </message>
    <message>
        <source>文字辨識模型</source>
        <translation>문자 인식 모델</translation>
    </message>
    <message>
        <source>日</source>
        <translation>日</translation>
    </message>
    <message>
        <source>日文</source>
        <translation>일본어</translation>
    </message>
    <message>
        <source>是</source>
        <translation>예</translation>
    </message>
    <message>
        <source>暫停記錄</source>
        <translation>기록 일시 중지</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>최대화</translation>
    </message>
    <message>
        <source>有 API Key</source>
        <translation>API 키 있음</translation>
    </message>
    <message>
        <source>服務</source>
        <translation>서비스</translation>
    </message>
    <message>
        <source>服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定</source>
        <translation>서비스에서 유효한 번역문을 반환하지 않았습니다. API 키, 모델, 네트워크 설정을 확인하세요</translation>
    </message>
    <message>
        <source>未知的指令：%@</source>
        <translation>알 수 없는 명령: %@</translation>
    </message>
    <message>
        <source>未知的選項：%@</source>
        <translation>알 수 없는 옵션: %@</translation>
    </message>
    <message>
        <source>未知錯誤</source>
        <translation>알 수 없는 오류</translation>
    </message>
    <message>
        <source>未設定</source>
        <translation>설정 안 됨</translation>
    </message>
    <message>
        <source>柔和櫻粉 (Soft Pink)</source>
        <translation>소프트 핑크</translation>
    </message>
    <message>
        <source>框選翻譯</source>
        <translation>영역 번역</translation>
    </message>
    <message>
        <source>桌面</source>
        <translation>데스크톱</translation>
    </message>
    <message>
        <source>桌面沒有回答分享畫面的請求。請再試一次；如果仍然沒有反應，請重新登入。</source>
        <translation>데스크톱이 화면 공유 요청에 응답하지 않았습니다. 다시 시도하고, 계속 응답이 없으면 다시 로그인하세요.</translation>
    </message>
    <message>
        <source>極簡無邊框 (No Border)</source>
        <translation>테두리 없음</translation>
    </message>
    <message>
        <source>標準輸入不是 UTF-8 文字</source>
        <translation>표준 입력이 UTF-8 텍스트가 아닙니다</translation>
    </message>
    <message>
        <source>標準輸入的文字過長</source>
        <translation>표준 입력의 텍스트가 너무 깁니다</translation>
    </message>
    <message>
        <source>模型伺服器回應錯誤：HTTP %d。</source>
        <translation>모델 서버가 오류를 보냈습니다: HTTP %d.</translation>
    </message>
    <message>
        <source>模型伺服器的網址必須使用 HTTPS。</source>
        <translation>모델 서버의 주소는 HTTPS를 사용해야 합니다.</translation>
    </message>
    <message>
        <source>模型名稱</source>
        <translation>모델 이름</translation>
    </message>
    <message>
        <source>模型名稱可依你的 Anthropic 帳號權限調整。</source>
        <translation>모델 이름은 Anthropic 계정의 권한에 맞게 바꿀 수 있습니다.</translation>
    </message>
    <message>
        <source>模型名稱可依你的 OpenAI 帳號權限調整。</source>
        <translation>모델 이름은 OpenAI 계정의 권한에 맞게 바꿀 수 있습니다.</translation>
    </message>
    <message>
        <source>模型的檔案已損壞：%@</source>
        <translation>모델 파일이 손상되었습니다: %@</translation>
    </message>
    <message>
        <source>檔案</source>
        <translation>파일</translation>
    </message>
    <message>
        <source>正在取得模型清單…</source>
        <translation>모델 목록을 가져오는 중…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文…</source>
        <translation>이 컴퓨터에 있는 번역을 모으는 중…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文，請稍後再試。</source>
        <translation>이 컴퓨터에 있는 번역문을 모으는 중입니다. 잠시 후 다시 시도하세요.</translation>
    </message>
    <message>
        <source>正在測試連線…</source>
        <translation>연결을 테스트하는 중…</translation>
    </message>
    <message>
        <source>正在辨識與翻譯</source>
        <translation>인식 및 번역 중</translation>
    </message>
    <message>
        <source>歷史紀錄</source>
        <translation>기록</translation>
    </message>
    <message>
        <source>段落</source>
        <translation>단락별로</translation>
    </message>
    <message>
        <source>沒有</source>
        <translation>없음</translation>
    </message>
    <message>
        <source>沒有偵測到文字</source>
        <translation>텍스트를 찾지 못했습니다</translation>
    </message>
    <message>
        <source>沒有分享螢幕，Lucentra 就看不到翻譯板下方的文字。按「分享畫面…」後，桌面會再問一次。</source>
        <translation>화면을 공유하지 않으면 번역 패널 아래의 글자를 볼 수 없습니다. ‘화면 공유…’를 누르면 데스크톱이 다시 묻습니다.</translation>
    </message>
    <message>
        <source>沒有可用的語言</source>
        <translation>사용할 수 있는 언어가 없음</translation>
    </message>
    <message>
        <source>沒有可翻譯的文字</source>
        <translation>번역할 텍스트가 없습니다</translation>
    </message>
    <message>
        <source>沒有合成器，翻譯板無法透明。請啟動一個，例如 picom。</source>
        <translation>컴포지터가 없어 번역 패널을 투명하게 할 수 없습니다. picom 등을 시작하세요.</translation>
    </message>
    <message>
        <source>沒有安裝這個翻譯模型。</source>
        <translation>이 번역 모델은 설치되어 있지 않습니다.</translation>
    </message>
    <message>
        <source>沒有工作階段匯流排：快速鍵指令、鑰匙圈與狀態圖示都無法使用。請從桌面的工作階段啟動。</source>
        <translation>세션 버스가 없어 명령, 키링, 상태 아이콘을 사용할 수 없습니다. 데스크톱 세션에서 시작하세요.</translation>
    </message>
    <message>
        <source>沒有發現問題。</source>
        <translation>문제를 찾지 못했습니다.</translation>
    </message>
    <message>
        <source>沒有這些模型，就讀不到那些語言的文字。請安裝：%@</source>
        <translation>모델이 없는 언어의 글자는 읽을 수 없습니다. 설치하세요: %@</translation>
    </message>
    <message>
        <source>淡雅水藍 (Subtle Blue)</source>
        <translation>은은한 블루</translation>
    </message>
    <message>
        <source>深色底、白字</source>
        <translation>어두운 바탕에 흰 글자</translation>
    </message>
    <message>
        <source>淺色底、黑字</source>
        <translation>밝은 바탕에 검은 글자</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>지우기</translation>
    </message>
    <message>
        <source>清除搜尋</source>
        <translation>검색 지우기</translation>
    </message>
    <message>
        <source>清除未收藏</source>
        <translation>별표 없는 항목 지우기</translation>
    </message>
    <message>
        <source>測試會送出一小段範例文字；雲端服務可能計入極少量 API 用量。</source>
        <translation>테스트할 때 짧은 예문 하나를 보냅니다. 클라우드 서비스에서는 아주 적은 API 사용량으로 계산될 수 있습니다.</translation>
    </message>
    <message>
        <source>測試翻譯引擎的連線</source>
        <translation>번역 엔진 연결 테스트</translation>
    </message>
    <message>
        <source>測試連線</source>
        <translation>연결 테스트</translation>
    </message>
    <message>
        <source>為了讀取翻譯板下方的文字，桌面接下來會請您分享畫面；請選擇翻譯板所在的螢幕。</source>
        <translation>번역 패널 아래의 글자를 읽기 위해 이제 데스크톱이 화면 공유를 요청합니다. 번역 패널이 있는 화면을 선택하세요.</translation>
    </message>
    <message>
        <source>無法使用</source>
        <translation>사용할 수 없음</translation>
    </message>
    <message>
        <source>無法判斷文字的語言。</source>
        <translation>텍스트의 언어를 알 수 없습니다.</translation>
    </message>
    <message>
        <source>無法匯出：%@</source>
        <translation>내보낼 수 없습니다: %@</translation>
    </message>
    <message>
        <source>無法寫入圖片 %@：%@</source>
        <translation>그림 %@을(를) 저장할 수 없습니다: %@</translation>
    </message>
    <message>
        <source>無法寫入標準輸出</source>
        <translation>표준 출력에 쓸 수 없습니다</translation>
    </message>
    <message>
        <source>無法寫入模型資料夾：%@</source>
        <translation>모델 폴더에 쓸 수 없습니다: %@</translation>
    </message>
    <message>
        <source>無法建立翻譯輸入</source>
        <translation>번역 입력을 만들 수 없습니다</translation>
    </message>
    <message>
        <source>無法擷取畫面</source>
        <translation>화면을 캡처할 수 없습니다</translation>
    </message>
    <message>
        <source>無法與伺服器建立安全連線</source>
        <translation>서버와 보안 연결을 설정할 수 없습니다</translation>
    </message>
    <message>
        <source>無法讀取先前的翻譯紀錄，原檔案會保留在同一個資料夾中。</source>
        <translation>이전 번역 기록을 읽을 수 없습니다. 원본 파일은 같은 폴더에 보관됩니다.</translation>
    </message>
    <message>
        <source>無法讀取圖片 %@：%@</source>
        <translation>그림 %@을(를) 읽을 수 없습니다: %@</translation>
    </message>
    <message>
        <source>無法讀取或寫入這個檔案。請檢查它的擁有者與權限。</source>
        <translation>이 파일을 읽거나 쓸 수 없습니다. 소유자와 권한을 확인하세요.</translation>
    </message>
    <message>
        <source>無法讀取標準輸入</source>
        <translation>표준 입력을 읽을 수 없습니다</translation>
    </message>
    <message>
        <source>無法讀取翻譯紀錄：%@</source>
        <translation>번역 기록을 읽을 수 없습니다: %@</translation>
    </message>
    <message>
        <source>無法透過代理伺服器連線</source>
        <translation>프록시 서버를 통해 연결할 수 없습니다</translation>
    </message>
    <message>
        <source>無法連線到 X 伺服器（DISPLAY）。</source>
        <translation>X 서버(DISPLAY)에 연결할 수 없습니다.</translation>
    </message>
    <message>
        <source>無法連線到伺服器</source>
        <translation>서버에 연결할 수 없습니다</translation>
    </message>
    <message>
        <source>版本</source>
        <translation>버전</translation>
    </message>
    <message>
        <source>狀態圖示</source>
        <translation>상태 아이콘</translation>
    </message>
    <message>
        <source>玻璃板樣式</source>
        <translation>번역 패널 스타일</translation>
    </message>
    <message>
        <source>玻璃色調</source>
        <translation>유리 색조</translation>
    </message>
    <message>
        <source>玻璃透明度：%d%%</source>
        <translation>유리 불투명도: %d%%</translation>
    </message>
    <message>
        <source>由桌面的快捷鍵呼叫 Lucentra</source>
        <translation>데스크톱 단축키로 Lucentra 호출</translation>
    </message>
    <message>
        <source>由系統安裝</source>
        <translation>시스템에 설치됨</translation>
    </message>
    <message>
        <source>畫面分享中斷了。請再試一次。</source>
        <translation>화면 공유가 중단되었습니다. 다시 시도하세요.</translation>
    </message>
    <message>
        <source>目標語言</source>
        <translation>대상 언어</translation>
    </message>
    <message>
        <source>目標語言：%@</source>
        <translation>대상 언어: %@</translation>
    </message>
    <message>
        <source>相容 API</source>
        <translation>호환 API</translation>
    </message>
    <message>
        <source>相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP</source>
        <translation>호환 API URL은 HTTPS를 사용해야 합니다. localhost에는 HTTP를 사용할 수 있습니다</translation>
    </message>
    <message>
        <source>相容 API URL 無效</source>
        <translation>호환 API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>알겠습니다</translation>
    </message>
    <message>
        <source>磁碟空間不足：還需要 %@。</source>
        <translation>디스크 공간이 부족합니다: %@가 필요합니다.</translation>
    </message>
    <message>
        <source>移動或縮放後自動翻譯・%@</source>
        <translation>이동하거나 크기를 바꾸면 자동 번역 · %@</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>제거</translation>
    </message>
    <message>
        <source>移除 %@</source>
        <translation>%@ 제거</translation>
    </message>
    <message>
        <source>移除 PAIR 的模型</source>
        <translation>PAIR의 모델을 제거합니다</translation>
    </message>
    <message>
        <source>稍後</source>
        <translation>나중에</translation>
    </message>
    <message>
        <source>简</source>
        <translation>简</translation>
    </message>
    <message>
        <source>簡體中文</source>
        <translation>중국어(간체)</translation>
    </message>
    <message>
        <source>系統</source>
        <translation>시스템</translation>
    </message>
    <message>
        <source>系統不接受這個組合鍵，可能已有其他程式使用。請改用別的組合鍵。</source>
        <translation>시스템이 이 단축키를 받아들이지 않았습니다. 다른 프로그램이 사용 중일 수 있으니 다른 단축키를 선택하세요.</translation>
    </message>
    <message>
        <source>系統沒有回傳擷取畫面</source>
        <translation>시스템에서 캡처한 화면을 반환하지 않았습니다</translation>
    </message>
    <message>
        <source>系統行為</source>
        <translation>동작</translation>
    </message>
    <message>
        <source>約 %@</source>
        <translation>약 %@</translation>
    </message>
    <message>
        <source>結束 Lucentra｜澄鏡通</source>
        <translation>Lucentra 종료</translation>
    </message>
    <message>
        <source>結束執行中的 Lucentra</source>
        <translation>실행 중인 Lucentra 종료</translation>
    </message>
    <message>
        <source>網路連線發生錯誤</source>
        <translation>네트워크 연결 오류가 발생했습니다</translation>
    </message>
    <message>
        <source>編輯</source>
        <translation>편집</translation>
    </message>
    <message>
        <source>縮小</source>
        <translation>최소화</translation>
    </message>
    <message>
        <source>繁</source>
        <translation>繁</translation>
    </message>
    <message>
        <source>繁體中文</source>
        <translation>중국어(번체)</translation>
    </message>
    <message>
        <source>繁體中文由 %@ 與簡體中文互相轉換。</source>
        <translation>중국어 번체는 %@(으)로 간체와 서로 변환합니다.</translation>
    </message>
    <message>
        <source>繼續下載 %@</source>
        <translation>%@ 이어받기</translation>
    </message>
    <message>
        <source>缺少參數：%@</source>
        <translation>인수가 없습니다: %@</translation>
    </message>
    <message>
        <source>缺少指令</source>
        <translation>명령이 없습니다</translation>
    </message>
    <message>
        <source>翻譯</source>
        <translation>번역</translation>
    </message>
    <message>
        <source>翻譯一段文字；含漢字的文字一律譯成英文。TEXT 為 - 時讀取標準輸入</source>
        <translation>텍스트를 번역(한자가 있으면 영어로 번역). TEXT가 -이면 표준 입력을 읽음</translation>
    </message>
    <message>
        <source>翻譯中</source>
        <translation>번역 중</translation>
    </message>
    <message>
        <source>翻譯原文</source>
        <translation>번역할 원문</translation>
    </message>
    <message>
        <source>翻譯單位</source>
        <translation>번역 단위</translation>
    </message>
    <message>
        <source>翻譯圖片中的文字，將譯文畫在原文之上</source>
        <translation>그림의 텍스트를 번역해 원문 위에 표시</translation>
    </message>
    <message>
        <source>翻譯失敗</source>
        <translation>번역하지 못했습니다</translation>
    </message>
    <message>
        <source>翻譯完成後自動複製到剪貼簿</source>
        <translation>번역이 끝나면 번역문을 클립보드에 자동 복사</translation>
    </message>
    <message>
        <source>翻譯引擎</source>
        <translation>번역 엔진</translation>
    </message>
    <message>
        <source>翻譯成 CODE 語言（例如 zh-Hant、en、ja），不改變設定</source>
        <translation>이번만 CODE 언어(예: zh-Hant, en, ja)로 번역</translation>
    </message>
    <message>
        <source>翻譯板</source>
        <translation>번역 패널</translation>
    </message>
    <message>
        <source>翻譯模型</source>
        <translation>번역 모델</translation>
    </message>
    <message>
        <source>翻譯模型能在這部電腦上翻譯任何文字。只有在您按下按鈕時才會下載；您的文字不會傳出。</source>
        <translation>번역 모델은 이 컴퓨터에서 모든 글을 번역합니다. 단추를 누를 때에만 내려받으며, 글은 전송되지 않습니다.</translation>
    </message>
    <message>
        <source>翻譯歷史紀錄</source>
        <translation>번역 기록</translation>
    </message>
    <message>
        <source>翻譯目前區域</source>
        <translation>현재 영역 번역</translation>
    </message>
    <message>
        <source>翻譯目前區域：</source>
        <translation>현재 영역 번역:</translation>
    </message>
    <message>
        <source>翻譯目前區域；翻譯板隱藏時先顯示</source>
        <translation>현재 영역 번역(번역 패널이 숨겨져 있으면 먼저 표시)</translation>
    </message>
    <message>
        <source>翻譯紀錄檔案過大，只讀取了開頭的部分。</source>
        <translation>기록 파일이 너무 커서 앞부분만 읽었습니다.</translation>
    </message>
    <message>
        <source>翻譯結果會顯示在這裡</source>
        <translation>번역문이 여기에 표시됩니다</translation>
    </message>
    <message>
        <source>自動模式會在移動或縮放後翻譯；手動模式移動只做對照，使用點擊、按鈕或快捷鍵才更新。</source>
        <translation>자동 모드에서는 이동하거나 크기를 바꾼 뒤에 번역합니다. 수동 모드에서는 클릭, 버튼, 단축키를 사용할 때만 갱신합니다.</translation>
    </message>
    <message>
        <source>自動調整文字大小</source>
        <translation>글자 크기 자동 조정</translation>
    </message>
    <message>
        <source>自動辨識</source>
        <translation>자동 인식</translation>
    </message>
    <message>
        <source>自動辨識（移動或縮放後）</source>
        <translation>자동(이동하거나 크기를 바꾼 뒤)</translation>
    </message>
    <message>
        <source>自動（依目標語言）</source>
        <translation>자동(대상 언어에 따름)</translation>
    </message>
    <message>
        <source>自訂文字大小：%d pt</source>
        <translation>글자 크기: %d pt</translation>
    </message>
    <message>
        <source>與伺服器的連線已中斷</source>
        <translation>서버와의 연결이 끊어졌습니다</translation>
    </message>
    <message>
        <source>英文</source>
        <translation>영어</translation>
    </message>
    <message>
        <source>複製</source>
        <translation>복사</translation>
    </message>
    <message>
        <source>複製全部翻譯</source>
        <translation>모든 번역문 복사</translation>
    </message>
    <message>
        <source>複製原文</source>
        <translation>원문 복사</translation>
    </message>
    <message>
        <source>複製翻譯</source>
        <translation>번역문 복사</translation>
    </message>
    <message>
        <source>複製翻譯結果</source>
        <translation>번역문 복사</translation>
    </message>
    <message>
        <source>複製這一段的翻譯</source>
        <translation>이 단락의 번역문 복사</translation>
    </message>
    <message>
        <source>複製這一行的翻譯</source>
        <translation>이 줄의 번역문 복사</translation>
    </message>
    <message>
        <source>要求已取消</source>
        <translation>요청이 취소되었습니다</translation>
    </message>
    <message>
        <source>視窗</source>
        <translation>창</translation>
    </message>
    <message>
        <source>視窗管理員</source>
        <translation>창 관리자</translation>
    </message>
    <message>
        <source>記錄已暫停：新的翻譯不會加入歷史紀錄。</source>
        <translation>기록 일시 중지됨: 새 번역이 기록에 추가되지 않습니다.</translation>
    </message>
    <message>
        <source>設定</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>設定…</source>
        <translation>설정…</translation>
    </message>
    <message>
        <source>設定後，可在任何情境下呼叫/隱藏翻譯板。默認為 ⌥T。欲清除請按 ESC。</source>
        <translation>어디서든 번역 패널을 표시하거나 숨길 수 있습니다. 기본값은 Alt+T입니다. Esc를 누르면 취소됩니다.</translation>
    </message>
    <message>
        <source>試算表（CSV）…</source>
        <translation>스프레드시트(CSV)…</translation>
    </message>
    <message>
        <source>語言</source>
        <translation>언어</translation>
    </message>
    <message>
        <source>請參閱伺服器的說明</source>
        <translation>서버의 설명을 참조</translation>
    </message>
    <message>
        <source>請在「螢幕與系統錄音」清單中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>‘화면 및 시스템 오디오 기록’ 목록에서 Lucentra를 활성화하세요. 목록에 아직 없으면 왼쪽 아래의 ‘＋’를 눌러 Lucentra.app을 추가한 다음 Lucentra를 다시 시작하세요.</translation>
    </message>
    <message>
        <source>請在桌面的設定中，為指令 lucentra toggle 與 lucentra translate 設定快速鍵。</source>
        <translation>데스크톱 설정에서 lucentra toggle과 lucentra translate 명령에 키를 지정하세요.</translation>
    </message>
    <message>
        <source>請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>시스템 설정에서 Lucentra를 활성화하세요. 목록에 아직 없으면 왼쪽 아래의 ‘＋’를 눌러 Lucentra.app을 추가한 다음 Lucentra를 다시 시작하세요.</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁同意傳送文字。</source>
        <translation>설정의 “번역” 탭에서 텍스트 전송에 동의하세요.</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁輸入 API Key。</source>
        <translation>설정의 “번역” 탭에서 API 키를 입력하세요.</translation>
    </message>
    <message>
        <source>請將翻譯視窗完整放在同一個螢幕內再試一次</source>
        <translation>번역 패널 전체를 한 디스플레이 안에 놓고 다시 시도하세요</translation>
    </message>
    <message>
        <source>請按下組合鍵... (按 ESC 取消)</source>
        <translation>단축키를 누르세요…(Esc로 취소)</translation>
    </message>
    <message>
        <source>請檢查 API Key、模型名稱與服務設定</source>
        <translation>API 키, 모델 이름, 서비스 설정을 확인하세요</translation>
    </message>
    <message>
        <source>請至設定填入 %@ API Key</source>
        <translation>설정에서 %@ API 키를 입력하세요</translation>
    </message>
    <message>
        <source>請至設定填入 Microsoft Azure API Key</source>
        <translation>설정에서 Microsoft Azure API 키를 입력하세요</translation>
    </message>
    <message>
        <source>請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。</source>
        <translation>텍스트 전체가 틀 안에 들어오도록 번역 패널의 위치나 크기를 조정한 뒤 다시 시도하세요.</translation>
    </message>
    <message>
        <source>譯文字型</source>
        <translation>번역문 글꼴</translation>
    </message>
    <message>
        <source>譯文最多為原文的 X 倍長，以模型的單位計；預設為 2.0</source>
        <translation>번역문은 원문의 X배까지만 길어집니다(모델의 단위). 기본값은 2.0</translation>
    </message>
    <message>
        <source>讓譯文即時跟隨翻譯板下的畫面</source>
        <translation>번역 패널 아래 화면의 변화를 번역이 실시간으로 따라가게 함</translation>
    </message>
    <message>
        <source>貼上</source>
        <translation>붙여넣기</translation>
    </message>
    <message>
        <source>資料傳送與隱私</source>
        <translation>데이터 전송 및 개인정보</translation>
    </message>
    <message>
        <source>資料夾裡沒有模型的這個檔案，或無法讀取：%@</source>
        <translation>폴더에 모델의 이 파일이 없거나 읽을 수 없습니다: %@</translation>
    </message>
    <message>
        <source>資料（JSON）…</source>
        <translation>데이터(JSON)…</translation>
    </message>
    <message>
        <source>跟隨介面語言</source>
        <translation>인터페이스 언어 따르기</translation>
    </message>
    <message>
        <source>跟隨系統</source>
        <translation>시스템 설정 따르기</translation>
    </message>
    <message>
        <source>輸入或貼上要翻譯的文字</source>
        <translation>번역할 텍스트를 입력하거나 붙여넣으세요</translation>
    </message>
    <message>
        <source>辨識</source>
        <translation>인식</translation>
    </message>
    <message>
        <source>辨識圖片中的文字，逐行輸出為 JSON</source>
        <translation>그림의 텍스트를 인식해 줄별로 JSON 출력</translation>
    </message>
    <message>
        <source>辨識或輸入的文字會傳送至 %@ 以產生翻譯；內容的處理方式受該服務的隱私政策約束。Lucentra 沒有中繼伺服器，也不會將副本傳給開發者。</source>
        <translation>인식되거나 입력된 텍스트는 번역을 위해 %@(으)로 전송되며, 처리 방식은 해당 서비스의 개인정보 처리방침을 따릅니다. Lucentra에는 중계 서버가 없으며 개발자에게 사본을 보내지 않습니다.</translation>
    </message>
    <message>
        <source>逐行</source>
        <translation>한 줄씩</translation>
    </message>
    <message>
        <source>逐行翻譯會切斷句子。若譯文不通順，請在設定的「翻譯」中把「翻譯單位」改為「段落」。</source>
        <translation>줄마다 번역하면 문장이 끊깁니다. 번역이 어색하면 설정의 ‘번역’에서 ‘번역 단위’를 ‘단락별로’로 바꾸세요.</translation>
    </message>
    <message>
        <source>這些翻譯模型無法使用，檔案可能已損壞：%@。請移除後重新下載。</source>
        <translation>이 번역 모델을 사용할 수 없습니다. 파일이 손상되었을 수 있습니다: %@. 제거한 뒤 다시 다운로드하세요.</translation>
    </message>
    <message>
        <source>這個 X 伺服器缺少擷取畫面所需的功能：%@</source>
        <translation>이 X 서버에는 화면 캡처에 필요한 기능이 없습니다: %@</translation>
    </message>
    <message>
        <source>這個桌面不提供畫面分享。請安裝後重新登入：%@</source>
        <translation>이 데스크톱은 화면 공유를 제공하지 않습니다. 설치한 뒤 다시 로그인하세요: %@</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請再次啟動 Lucentra。</source>
        <translation>이 데스크톱에는 시스템 트레이가 없습니다. 번역 패널을 다시 표시하려면 Lucentra를 다시 시작하세요.</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。</source>
        <translation>이 데스크톱에는 시스템 트레이가 없습니다. 번역 패널을 다시 표시하려면 %@을(를) 누르거나 Lucentra를 다시 시작하세요.</translation>
    </message>
    <message>
        <source>這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。</source>
        <translation>이 시스템의 dpkg 설정은 번역문을 설치하지 않습니다(path-exclude). 먼저 설정을 바꾸세요.</translation>
    </message>
    <message>
        <source>這個翻譯模型由系統安裝，無法在這裡移除。</source>
        <translation>이 번역 모델은 시스템에 설치된 것이라 여기서 제거할 수 없습니다.</translation>
    </message>
    <message>
        <source>這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。</source>
        <translation>이 컴퓨터의 프로그램에는 이 텍스트의 번역문이 없습니다. 다른 번역 엔진을 사용하세요.</translation>
    </message>
    <message>
        <source>這部電腦上的翻譯模型：</source>
        <translation>이 컴퓨터의 번역 모델:</translation>
    </message>
    <message>
        <source>這部電腦可以翻譯：</source>
        <translation>이 컴퓨터에서 번역할 수 있는 언어:</translation>
    </message>
    <message>
        <source>這部電腦已經能翻譯程式的選單與訊息。網頁、遊戲等其他文字需要翻譯模型，下載一次即可離線使用。</source>
        <translation>이 컴퓨터는 프로그램의 메뉴와 메시지를 이미 번역할 수 있습니다. 웹 페이지나 게임 같은 다른 글에는 번역 모델이 필요합니다. 한 번 다운로드하면 오프라인에서도 쓸 수 있습니다.</translation>
    </message>
    <message>
        <source>這部電腦沒有鑰匙圈服務，無法保存 API Key。請安裝後重新登入：%@</source>
        <translation>이 컴퓨터에 키 모음 서비스가 없어 API 키를 보관할 수 없습니다. 설치한 뒤 다시 로그인하세요: %@</translation>
    </message>
    <message>
        <source>這部電腦無法翻譯這種語言。請改用其他翻譯引擎。</source>
        <translation>이 컴퓨터는 이 언어를 번역할 수 없습니다. 다른 번역 엔진을 사용하세요.</translation>
    </message>
    <message>
        <source>這部電腦還沒有能翻譯這些文字的模型。請在設定的「翻譯」分頁下載：%@</source>
        <translation>이 글을 번역할 모델이 아직 없습니다. 설정의 ‘번역’ 탭에서 내려받으세요: %@</translation>
    </message>
    <message>
        <source>連線失敗：%@</source>
        <translation>연결 실패: %@</translation>
    </message>
    <message>
        <source>連線成功：%@</source>
        <translation>연결 성공: %@</translation>
    </message>
    <message>
        <source>連線逾時，請稍後再試</source>
        <translation>연결 시간이 초과되었습니다. 잠시 후 다시 시도하세요</translation>
    </message>
    <message>
        <source>選項 %@ 不接受值</source>
        <translation>%@ 옵션에는 값을 줄 수 없습니다</translation>
    </message>
    <message>
        <source>選項 %@ 的值無效：%@</source>
        <translation>%@ 옵션의 값이 올바르지 않습니다: %@</translation>
    </message>
    <message>
        <source>選項 %@ 需要一個值</source>
        <translation>%@ 옵션에는 값이 필요합니다</translation>
    </message>
    <message>
        <source>還原</source>
        <translation>실행 취소</translation>
    </message>
    <message>
        <source>邊框發光顏色：</source>
        <translation>테두리 빛 색상:</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>다시 실행</translation>
    </message>
    <message>
        <source>重新翻譯</source>
        <translation>다시 번역</translation>
    </message>
    <message>
        <source>重試</source>
        <translation>다시 시도</translation>
    </message>
    <message>
        <source>重試翻譯</source>
        <translation>번역 다시 시도</translation>
    </message>
    <message>
        <source>鑰匙圈</source>
        <translation>키링</translation>
    </message>
    <message>
        <source>鑰匙圈已鎖定。請在系統詢問時解鎖；API Key 會在下次嘗試時讀取或存入。</source>
        <translation>키 모음이 잠겨 있습니다. 시스템이 물으면 잠금을 푸세요. API 키는 다음에 시도할 때 읽거나 저장합니다.</translation>
    </message>
    <message>
        <source>鑰匙圈沒有回應，API Key 尚未讀取或存入。請稍後再試。</source>
        <translation>키 모음이 응답하지 않아 API 키를 읽거나 저장하지 못했습니다. 잠시 후 다시 시도하세요.</translation>
    </message>
    <message>
        <source>開啟 / 停止即時翻譯：</source>
        <translation>실시간 번역 시작/중지:</translation>
    </message>
    <message>
        <source>開啟或停止即時翻譯</source>
        <translation>실시간 번역을 시작하거나 중지</translation>
    </message>
    <message>
        <source>開啟系統設定</source>
        <translation>시스템 설정 열기</translation>
    </message>
    <message>
        <source>開啟翻譯歷史紀錄視窗</source>
        <translation>번역 기록 창 열기</translation>
    </message>
    <message>
        <source>開啟設定視窗</source>
        <translation>설정 창 열기</translation>
    </message>
    <message>
        <source>開機自動啟動</source>
        <translation>로그인할 때 시작</translation>
    </message>
    <message>
        <source>閱讀隱私權政策</source>
        <translation>개인정보 처리방침 읽기</translation>
    </message>
    <message>
        <source>關於</source>
        <translation>정보</translation>
    </message>
    <message>
        <source>關於 Lucentra｜澄鏡通</source>
        <translation>Lucentra 정보</translation>
    </message>
    <message>
        <source>關閉</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>隱藏 API Key</source>
        <translation>API 키 숨기기</translation>
    </message>
    <message>
        <source>隱藏 Lucentra</source>
        <translation>Lucentra 숨기기</translation>
    </message>
    <message>
        <source>隱藏其他項目</source>
        <translation>기타 숨기기</translation>
    </message>
    <message>
        <source>隱藏翻譯板</source>
        <translation>번역 패널 숨기기</translation>
    </message>
    <message>
        <source>雙擊玻璃板即可翻譯</source>
        <translation>번역 패널을 두 번 클릭하면 번역합니다</translation>
    </message>
    <message>
        <source>雙擊翻譯</source>
        <translation>두 번 클릭하여 번역</translation>
    </message>
    <message>
        <source>雙擊翻譯（建議）</source>
        <translation>두 번 클릭하여 번역(권장)</translation>
    </message>
    <message>
        <source>需要「螢幕錄影」權限</source>
        <translation>‘화면 기록’ 권한이 필요합니다</translation>
    </message>
    <message>
        <source>需要螢幕錄製權限</source>
        <translation>화면 기록 권한이 필요합니다</translation>
    </message>
    <message>
        <source>韓文</source>
        <translation>한국어</translation>
    </message>
    <message>
        <source>顯示 / 隱藏翻譯視窗：</source>
        <translation>번역 패널 표시/숨기기:</translation>
    </message>
    <message>
        <source>顯示 API Key</source>
        <translation>API 키 표시</translation>
    </message>
    <message>
        <source>顯示/隱藏 翻譯板</source>
        <translation>번역 패널 표시/숨기기</translation>
    </message>
    <message>
        <source>顯示全部</source>
        <translation>모두 표시</translation>
    </message>
    <message>
        <source>顯示或隱藏翻譯板</source>
        <translation>번역 패널을 표시하거나 숨기기</translation>
    </message>
    <message>
        <source>顯示翻譯板</source>
        <translation>번역 패널 표시</translation>
    </message>
    <message>
        <source>點擊玻璃板</source>
        <translation>번역 패널 클릭</translation>
    </message>
</context>
</TS>
