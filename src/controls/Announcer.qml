import QtQuick

/// Tells assistants something without taking the keyboard: a notification that nobody sees, which is what they read out by
/// themselves. Texts that come together are said one after the other, the oldest left out where they are many.
Item {
    id: root

    property list<string> waiting

    function say(text: string) {
        const most = 4;
        waiting = [...waiting, text].slice(-most);
        if (!turn.running)
            next();
    }

    function next() {
        words.visible = false;
        if (waiting.length === 0)
            return;
        words.text = waiting[0];
        waiting = waiting.slice(1);
        words.visible = true;
        turn.restart();
    }

    Item {
        id: words

        property string text: ""

        height: 1
        visible: false
        width: 1

        Accessible.name: text
        Accessible.role: Accessible.Notification
    }

    Timer {
        id: turn

        interval: 2000 // long enough for an assistant to ask what it says
        onTriggered: root.next()
    }
}
