from wagons import IOsharemem_client, automemlink, input_signal, output_signal

with IOsharemem_client(automemlink()) as mine:
    dc, pcA, pdAB, pcC, pdC, wAvide, wAplein, wCvide = (
        input_signal(mine, name) for name in "dc pcA pdAB pcC pdC wAvide wAplein wCvide".split())
    A_GAUCHE, A_DROITE, C_GAUCHE, C_DROITE, REMPLIR_A, VIDER_A, VIDER_C = (
        output_signal(mine, name)
        for name in "A_GAUCHE A_DROITE C_GAUCHE C_DROITE REMPLIR_A VIDER_A VIDER_C".split())
    step = "at rest"

    for batch in mine.batches():  # ends with the run
        match step:  # transitions
            case "at rest" if dc: step = "go home"
            case "go home" if pcA and pcC: step = "fill A"
            case "fill A" if wAplein: step = "bring"
            case "bring" if pdAB: step = "tip A"
            case "tip A" if wAvide: step = "carry"
            case "carry" if pdC: step = "empty C"
            case "empty C" if wCvide: step = "go home"

        A_GAUCHE.set(step == "go home" and not pcA)  # actions
        C_GAUCHE.set(step == "go home" and not pcC)
        REMPLIR_A.set(step == "fill A")
        A_DROITE.set(step == "bring")
        VIDER_A.set(step == "tip A")
        C_DROITE.set(step == "carry")
        VIDER_C.set(step == "empty C")
