# Uses the packages in the system that they are installed in.
cd /tmp
objecthost --version
objecthost demo demo
ls -l demo
xvfb-run -a bash -eu -c '
  objecthost-window demo/scene.akd & window=$!
  for _ in $(seq 60); do
    if xdotool search --name scene; then kill $window; exit 0; fi
    sleep 1
  done
  exit 1'
cmake -S /usr/share/doc/akkit-dev/examples/star -B star
cmake --build star
objecthost validate star/Star.so
