# Completes lucentra's command line in fish.

complete -c lucentra -f
complete -c lucentra -l help -d 'print the help page'
complete -c lucentra -n __fish_use_subcommand -l version -d 'print the version'

complete -c lucentra -n __fish_use_subcommand -a recognize -d 'print the lines of a picture as JSON'
complete -c lucentra -n __fish_use_subcommand -a image -d 'translate a picture'
complete -c lucentra -n __fish_use_subcommand -a text -d 'translate a text'
complete -c lucentra -n __fish_use_subcommand -a test-connection -d 'test whether the engine works'
complete -c lucentra -n __fish_use_subcommand -a languages -d 'list what translates on this computer'
complete -c lucentra -n __fish_use_subcommand -a models -d 'list, install, remove or try translation models'
complete -c lucentra -n __fish_use_subcommand -a doctor -d 'say what is wrong and how to mend it'
complete -c lucentra -n __fish_use_subcommand -a export -d 'export the history to a file'
complete -c lucentra -n __fish_use_subcommand -a entries -d 'list the history'
complete -c lucentra -n __fish_use_subcommand -a toggle -d 'show or hide the pane'
complete -c lucentra -n __fish_use_subcommand -a show -d 'show the pane'
complete -c lucentra -n __fish_use_subcommand -a hide -d 'hide the pane'
complete -c lucentra -n __fish_use_subcommand -a translate -d 'translate the current area'
complete -c lucentra -n __fish_use_subcommand -a live -d 'have translations follow the screen, or stop that'
complete -c lucentra -n __fish_use_subcommand -a settings -d 'open the settings window'
complete -c lucentra -n __fish_use_subcommand -a history -d 'open the history window'
complete -c lucentra -n __fish_use_subcommand -a quit -d 'quit the running program'

complete -c lucentra -n '__fish_seen_subcommand_from models; and not __fish_seen_subcommand_from install remove run' -a 'install remove run'
complete -c lucentra -n '__fish_seen_subcommand_from live; and not __fish_seen_subcommand_from on off toggle' -a 'on off toggle'
complete -c lucentra -n '__fish_seen_subcommand_from recognize image export' -F
complete -c lucentra -n '__fish_seen_subcommand_from image' -l output -r -F -d 'write the picture to this file'
complete -c lucentra -n '__fish_seen_subcommand_from image text test-connection' -l engine -x -a '0\ton-device 1\tGoogle 2\tMicrosoft 3\tGemini 4\tDeepL 5\tOpenAI 6\tClaude 7\tcompatible' -d 'use this engine once'
complete -c lucentra -n '__fish_seen_subcommand_from image text' -l target -x -a 'zh-Hant zh-Hans en ja ko' -d 'translate into this language once'
complete -c lucentra -n '__fish_seen_subcommand_from models' -l max-length-factor -x -d 'how much longer than the source'
complete -c lucentra -n '__fish_seen_subcommand_from run' -F
complete -c lucentra -n '__fish_seen_subcommand_from recognize image' -l paragraphs -d 'join the lines of a paragraph'
complete -c lucentra -n '__fish_seen_subcommand_from image languages entries' -l json -d 'print JSON'
complete -c lucentra -n '__fish_seen_subcommand_from recognize image text' -l timing -d 'also print the milliseconds of each stage'
complete -c lucentra -n '__fish_seen_subcommand_from export' -l format -x -a 'csv json tsv' -d 'format of the file'
complete -c lucentra -n '__fish_seen_subcommand_from export entries' -l search -x -d 'only entries with this text'
