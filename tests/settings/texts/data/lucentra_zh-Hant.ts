<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>有覆寫</source>
        <translation>覆寫的文字</translation>
    </message>
</context>
</TS>
