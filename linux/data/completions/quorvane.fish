# fish completion for quorvane
set -l commands status summary menu card key baseline history auto-refresh interval notifications autostart
complete -c quorvane -f
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -l demo -d 'A simulated account: nothing of yours is read or written'
complete -c quorvane -l help -d 'Show the help page'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a status -d 'Print the menu-bar title'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a summary -d 'Print the plain-text summary'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a menu -d 'Print the whole menu'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a card -d "Draw the menu's card into a PNG file"
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a key -d 'Save or forget the API key'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a baseline -d 'Count spend from the next reading on'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a history -d 'Forget the balance history'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a auto-refresh -d 'Switch refreshing on a timer on or off'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a interval -d 'Set the seconds between automatic refreshes'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a notifications -d 'Notify when the balance falls low, or not'
complete -c quorvane -n "not __fish_seen_subcommand_from $commands" -a autostart -d 'Start the desktop app at login, or not'
complete -c quorvane -n "__fish_seen_subcommand_from status menu" -l json -d 'Print JSON'
complete -c quorvane -n "__fish_seen_subcommand_from summary" -l copy -d 'Also copy it to the clipboard'
complete -c quorvane -n "__fish_seen_subcommand_from card" -l png -r -F -d 'The PNG file to write'
complete -c quorvane -n "__fish_seen_subcommand_from card" -l hover -x -d 'A sample index'
complete -c quorvane -n "__fish_seen_subcommand_from card" -l scale -x -a "1 2 3 4 5 6 7 8" -d 'Pixels per point'
complete -c quorvane -n "__fish_seen_subcommand_from key" -a "set remove"
complete -c quorvane -n "__fish_seen_subcommand_from baseline" -a reset
complete -c quorvane -n "__fish_seen_subcommand_from history" -a clear
complete -c quorvane -n "__fish_seen_subcommand_from auto-refresh" -a "on off"
complete -c quorvane -n "__fish_seen_subcommand_from interval" -a "30 60 300 900"
complete -c quorvane -n "__fish_seen_subcommand_from notifications" -a "on off status"
complete -c quorvane -n "__fish_seen_subcommand_from autostart" -a "on off status"
