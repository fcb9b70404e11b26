# Completes lucentra's command line in bash.

_lucentra()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    # "=" separates words in bash: --engine=3 comes as three of them.
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        local commands='recognize image text test-connection languages models doctor export entries
            toggle show hide translate live settings history quit'
        mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$current")
        return
    fi
    case $previous in
        --engine) mapfile -t COMPREPLY < <(compgen -W '0 1 2 3 4 5 6 7' -- "$current") ;;
        --target) mapfile -t COMPREPLY < <(compgen -W 'zh-Hant zh-Hans en ja ko' -- "$current") ;;
        --format) mapfile -t COMPREPLY < <(compgen -W 'csv json tsv' -- "$current") ;;
        --search | --max-length-factor) ;;
        --output) compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        *)
            local options
            case $command in
                recognize) options='--paragraphs --timing' ;;
                image) options='--output --engine --target --paragraphs --json --timing' ;;
                text) options='--engine --target --timing' ;;
                test-connection) options='--engine' ;;
                languages) options='--json' ;;
                models) options='--max-length-factor' ;;
                export) options='--format --search' ;;
                entries) options='--json --search' ;;
            esac
            if [[ $command == models && $COMP_CWORD == 2 && $current != -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W 'install remove run' -- "$current")
            elif [[ $command == live && $COMP_CWORD == 2 && $current != -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W 'on off toggle' -- "$current")
            elif [[ $current == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "$options --help" -- "$current")
            elif [[ $command == models && ${COMP_WORDS[2]} == run || $command == recognize || $command == image || $command == export ]]; then
                compopt -o filenames 2>/dev/null
                mapfile -t COMPREPLY < <(compgen -f -- "$current")
            fi
            ;;
    esac
}

complete -F _lucentra lucentra
