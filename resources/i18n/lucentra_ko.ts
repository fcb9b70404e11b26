<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
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
        <source>%d 個詞句</source>
        <translation>어구 %d개</translation>
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
        <source>API Key 或設定含有無法傳送的字元</source>
        <translation>API 키 또는 설정에 전송할 수 없는 문자가 있습니다</translation>
    </message>
    <message>
        <source>Apple 內建翻譯需升級至 macOS 15</source>
        <translation>Apple 내장 번역을 사용하려면 macOS 15로 업그레이드해야 합니다</translation>
    </message>
    <message>
        <source>Apple 翻譯失敗</source>
        <translation>Apple 번역에 실패했습니다</translation>
    </message>
    <message>
        <source>Claude API URL 無效</source>
        <translation>Claude API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>DeepL API URL 無效</source>
        <translation>DeepL API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Google Cloud API URL 無效</source>
        <translation>Google Cloud API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>Google 免費翻譯</source>
        <translation>Google 무료 번역</translation>
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
        <source>Lucentra 需要圖形桌面（沒有設定 DISPLAY）。</source>
        <translation>Lucentra에는 그래픽 데스크톱이 필요합니다(DISPLAY가 설정되지 않음).</translation>
    </message>
    <message>
        <source>Lucentra：翻譯螢幕上的文字</source>
        <translation>Lucentra: 화면의 글자를 번역합니다</translation>
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
        <source>Microsoft Translator API URL 無效</source>
        <translation>Microsoft Translator API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>OpenAI API URL 無效</source>
        <translation>OpenAI API URL이 유효하지 않습니다</translation>
    </message>
    <message>
        <source>lucentra --help 列出所有指令</source>
        <translation>lucentra --help로 모든 명령을 볼 수 있습니다</translation>
    </message>
    <message>
        <source>⚠️ Apple 內建翻譯需升級至 macOS 15</source>
        <translation>⚠️ Apple 내장 번역을 사용하려면 macOS 15로 업그레이드해야 합니다</translation>
    </message>
    <message>
        <source>⚠️ Apple 翻譯失敗</source>
        <translation>⚠️ Apple 번역에 실패했습니다</translation>
    </message>
    <message>
        <source>⚠️ 請先在翻譯設定中允許將文字傳送至 %@。</source>
        <translation>⚠️ 먼저 번역 설정에서 %@(으)로의 텍스트 전송을 허용하세요.</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入 Claude API Key</source>
        <translation>⚠️ 설정에서 Claude API 키를 입력하세요</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入 DeepL API Key</source>
        <translation>⚠️ 설정에서 DeepL API 키를 입력하세요</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入 Gemini API Key</source>
        <translation>⚠️ 설정에서 Gemini API 키를 입력하세요</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入 Microsoft Azure API Key</source>
        <translation>⚠️ 설정에서 Microsoft Azure API 키를 입력하세요</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入 OpenAI API Key</source>
        <translation>⚠️ 설정에서 OpenAI API 키를 입력하세요</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入相容 API Key</source>
        <translation>⚠️ 설정에서 호환 API 키를 입력하세요</translation>
    </message>
    <message>
        <source>❌ API 回應格式錯誤或金鑰無效</source>
        <translation>❌ API 응답 형식이 잘못되었거나 키가 유효하지 않습니다</translation>
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
        <translation>❌ 번역 실패: %@</translation>
    </message>
    <message>
        <source>不支援的圖片格式</source>
        <translation>지원하지 않는 그림 형식입니다</translation>
    </message>
    <message>
        <source>不是可辨識的圖片格式：%@</source>
        <translation>알 수 없는 그림 형식입니다: %@</translation>
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
        <source>使用第 N 個翻譯引擎（0 至 7），不改變設定</source>
        <translation>이번만 번역 엔진 N(0~7) 사용</translation>
    </message>
    <message>
        <source>允許將文字傳送至 %@</source>
        <translation>%@(으)로 텍스트 전송 허용</translation>
    </message>
    <message>
        <source>全選</source>
        <translation>모두 선택</translation>
    </message>
    <message>
        <source>全部顯示</source>
        <translation>모두 보기</translation>
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
        <source>刪除</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>剪下</source>
        <translation>오려두기</translation>
    </message>
    <message>
        <source>同時輸出各階段所需的毫秒數</source>
        <translation>단계별 소요 시간(밀리초)도 출력</translation>
    </message>
    <message>
        <source>同時輸出每一行的譯文與位置</source>
        <translation>각 줄의 번역과 위치도 출력</translation>
    </message>
    <message>
        <source>單擊玻璃板即可翻譯</source>
        <translation>글라스 패널을 클릭하면 번역합니다</translation>
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
        <translation>그림이 손상되었거나 해석할 수 없습니다: %@</translation>
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
        <source>在 Wayland 工作階段中，Lucentra 只看得到 X11 程式的視窗，而翻譯板下方沒有這樣的視窗。請讓那個程式透過 XWayland 執行，或改用 X11 工作階段登入。</source>
        <translation>Wayland 세션에서 Lucentra는 X11 프로그램의 창만 볼 수 있으며, 패널 아래에는 그런 창이 없습니다. 해당 프로그램을 XWayland로 실행하거나 X11 세션으로 로그인하세요.</translation>
    </message>
    <message>
        <source>多餘的參數：%@</source>
        <translation>불필요한 인수: %@</translation>
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
        <source>您設定的相容 API 端點</source>
        <translation>설정한 호환 API 엔드포인트</translation>
    </message>
    <message>
        <source>所選服務</source>
        <translation>선택한 서비스</translation>
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
        <translation>캡처할 수 있는 번역 창을 찾을 수 없습니다. 화면 기록 권한을 확인하세요</translation>
    </message>
    <message>
        <source>找不到工作階段匯流排（D-Bus），無法聯絡 Lucentra。</source>
        <translation>세션 버스(D-Bus)를 찾을 수 없어 Lucentra에 연결할 수 없습니다.</translation>
    </message>
    <message>
        <source>找不到翻譯視窗所在的顯示器</source>
        <translation>번역 창이 있는 디스플레이를 찾을 수 없습니다</translation>
    </message>
    <message>
        <source>文字已是目標語言。</source>
        <translation>글이 이미 대상 언어로 되어 있습니다.</translation>
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
        <source>服務</source>
        <translation>서비스</translation>
    </message>
    <message>
        <source>服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定</source>
        <translation>서비스에서 유효한 번역을 반환하지 않았습니다. 키, 모델, 네트워크 설정을 확인하세요</translation>
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
        <source>框選翻譯</source>
        <translation>영역 번역</translation>
    </message>
    <message>
        <source>正在辨識與翻譯</source>
        <translation>인식 및 번역 중</translation>
    </message>
    <message>
        <source>沒有偵測到文字</source>
        <translation>텍스트를 찾지 못했습니다</translation>
    </message>
    <message>
        <source>沒有可用的語言</source>
        <translation>사용할 수 있는 언어가 없음</translation>
    </message>
    <message>
        <source>測試翻譯引擎的連線</source>
        <translation>번역 엔진 연결 테스트</translation>
    </message>
    <message>
        <source>無法判斷文字的語言。</source>
        <translation>글의 언어를 알 수 없습니다.</translation>
    </message>
    <message>
        <source>無法寫入圖片 %@：%@</source>
        <translation>그림 %@을(를) 저장할 수 없습니다: %@</translation>
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
        <source>無法讀取圖片：%@</source>
        <translation>그림을 읽을 수 없습니다: %@</translation>
    </message>
    <message>
        <source>無法透過代理伺服器連線</source>
        <translation>프록시 서버를 통해 연결할 수 없습니다</translation>
    </message>
    <message>
        <source>無法連線到伺服器</source>
        <translation>서버에 연결할 수 없습니다</translation>
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
        <source>移動或縮放後自動翻譯・%@</source>
        <translation>이동하거나 크기를 바꾸면 자동 번역 · %@</translation>
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
        <source>系統沒有回傳擷取畫面</source>
        <translation>시스템에서 캡처한 화면을 반환하지 않았습니다</translation>
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
        <source>縮放</source>
        <translation>확대/축소</translation>
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
        <source>翻譯一段文字；含漢字的文字一律譯成英文</source>
        <translation>글을 번역(한자가 있으면 영어로 번역)</translation>
    </message>
    <message>
        <source>翻譯圖片中的文字，將譯文畫在原文之上</source>
        <translation>그림의 글자를 번역해 원문 위에 표시</translation>
    </message>
    <message>
        <source>翻譯失敗</source>
        <translation>번역하지 못했습니다</translation>
    </message>
    <message>
        <source>翻譯成 CODE 語言（例如 zh-Hant、en、ja），不改變設定</source>
        <translation>이번만 CODE 언어(예: zh-Hant, en, ja)로 번역</translation>
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
        <source>翻譯目前區域；翻譯板隱藏時先顯示</source>
        <translation>현재 영역 번역(패널이 가려져 있으면 먼저 표시)</translation>
    </message>
    <message>
        <source>自動辨識</source>
        <translation>자동 인식</translation>
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
        <source>複製翻譯結果</source>
        <translation>번역 결과 복사</translation>
    </message>
    <message>
        <source>要求已取消</source>
        <translation>요청이 취소되었습니다</translation>
    </message>
    <message>
        <source>視窗</source>
        <translation>윈도우</translation>
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
        <source>請在「螢幕與系統錄音」清單中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>‘화면 및 시스템 오디오 기록’ 목록에서 Lucentra를 활성화하세요. 목록에 아직 없으면 왼쪽 아래의 ‘＋’를 눌러 Lucentra.app을 추가한 다음 앱을 다시 시작하세요.</translation>
    </message>
    <message>
        <source>請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>시스템 설정에서 Lucentra를 활성화하세요. 목록에 아직 없으면 왼쪽 아래의 ‘＋’를 눌러 Lucentra.app을 추가한 다음 앱을 다시 시작하세요.</translation>
    </message>
    <message>
        <source>請將翻譯視窗完整放在同一個螢幕內再試一次</source>
        <translation>번역 창 전체를 한 화면 안에 놓고 다시 시도하세요</translation>
    </message>
    <message>
        <source>請按下組合鍵... (按 ESC 取消)</source>
        <translation>단축키를 누르세요… (ESC로 취소)</translation>
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
        <source>請至設定填入 Gemini API Key</source>
        <translation>설정에서 Gemini API 키를 입력하세요</translation>
    </message>
    <message>
        <source>請至設定填入 Microsoft Azure API Key</source>
        <translation>설정에서 Microsoft Azure API 키를 입력하세요</translation>
    </message>
    <message>
        <source>請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。</source>
        <translation>텍스트 전체가 틀 안에 들어오도록 글라스 패널의 위치나 크기를 조정한 뒤 다시 시도하세요.</translation>
    </message>
    <message>
        <source>貼上</source>
        <translation>붙여넣기</translation>
    </message>
    <message>
        <source>跟隨系統</source>
        <translation>시스템 설정 따르기</translation>
    </message>
    <message>
        <source>辨識圖片中的文字，逐行輸出為 JSON</source>
        <translation>그림의 글자를 인식해 줄별로 JSON 출력</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。</source>
        <translation>이 데스크톱에는 시스템 트레이가 없습니다. 패널을 다시 보려면 %@을(를) 누르거나 Lucentra를 다시 시작하세요.</translation>
    </message>
    <message>
        <source>這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。</source>
        <translation>이 시스템의 dpkg 설정은 번역을 설치하지 않습니다(path-exclude). 먼저 설정을 바꾸세요.</translation>
    </message>
    <message>
        <source>這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。</source>
        <translation>이 컴퓨터의 프로그램에는 이 글의 번역이 없습니다. 다른 번역 엔진을 사용하세요.</translation>
    </message>
    <message>
        <source>這部電腦無法翻譯這種語言。請改用其他翻譯引擎。</source>
        <translation>이 컴퓨터는 이 언어를 번역할 수 없습니다. 다른 번역 엔진을 사용하세요.</translation>
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
        <source>開啟系統設定</source>
        <translation>시스템 설정 열기</translation>
    </message>
    <message>
        <source>開啟翻譯歷史紀錄視窗</source>
        <translation>번역 기록 윈도우 열기</translation>
    </message>
    <message>
        <source>開啟設定視窗</source>
        <translation>설정 윈도우 열기</translation>
    </message>
    <message>
        <source>關於 Lucentra｜澄鏡通</source>
        <translation>Lucentra에 관하여</translation>
    </message>
    <message>
        <source>關閉</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>隱藏 Lucentra</source>
        <translation>Lucentra 가리기</translation>
    </message>
    <message>
        <source>隱藏其他項目</source>
        <translation>기타 가리기</translation>
    </message>
    <message>
        <source>隱藏翻譯板</source>
        <translation>번역 패널 가리기</translation>
    </message>
    <message>
        <source>雙擊玻璃板即可翻譯</source>
        <translation>글라스 패널을 두 번 클릭하면 번역합니다</translation>
    </message>
    <message>
        <source>雙擊翻譯</source>
        <translation>두 번 클릭하여 번역</translation>
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
        <source>顯示/隱藏 翻譯板</source>
        <translation>번역 패널 보기/가리기</translation>
    </message>
    <message>
        <source>顯示或隱藏翻譯板</source>
        <translation>번역 패널을 보이거나 가리기</translation>
    </message>
    <message>
        <source>顯示翻譯板</source>
        <translation>번역 패널 보기</translation>
    </message>
</context>
</TS>
