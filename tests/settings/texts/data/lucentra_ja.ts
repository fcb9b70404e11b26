<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>兩表皆有</source>
        <translation>両方にある</translation>
    </message>
</context>
</TS>
